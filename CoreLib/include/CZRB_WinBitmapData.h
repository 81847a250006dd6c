/// @file
/// CZRB_WinBitmapData: loads a Windows BMP file (info header, colour table, pixel bytes) and
/// answers questions about single pixels. A reader only: nothing is written or decompressed.
#ifndef CZRB_WINBITMAPDATA_H
#define CZRB_WINBITMAPDATA_H

#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Uint32Vector.h"
#include "CZRB_Uint8Vector.h"

class CZRB_File;

/// Loads a Windows BMP file (info header, colour table, pixel bytes) and answers questions
/// about single pixels. A reader only: nothing is written or decompressed.
///
/// Pixel queries support 1- and 8-bit palette images and 24-bit direct-colour images stored
/// bottom-up with the 40-byte info header; other files may load, their pixel queries answer
/// with a result code. Every operation returns an unsigned result code, 0 for success:
/// 3 coordinates or byte offset outside the image, 8 depth not supported, 10 not the 40-byte
/// header (colour) or no palette (index), 11 not a readable BMP, 19 the file lost its stream,
/// 30 the file could not be opened or its palette or pixel data is shorter than announced.
class LZRB_API CZRB_WinBitmapData : public CZRB_Object {
public:
    /// The BMP info header as read from the file (little-endian there).
    struct SInfoHeader {
        unsigned int biSize;         ///< size of the info header in bytes
        int biWidth;                 ///< width in pixels
        int biHeight;                ///< height in pixels
        unsigned short biPlanes;     ///< colour planes, as stored
        unsigned short biBitCount;   ///< bits per pixel
        unsigned int biCompression;  ///< compression type, as stored
        unsigned int biSizeImage;    ///< bytes of pixel data (computed when the file gives 0)
        int biXPelsPerMeter;         ///< horizontal pixels per metre, as stored
        int biYPelsPerMeter;         ///< vertical pixels per metre, as stored
        unsigned int biClrUsed;      ///< colours used; 0 for the depth's full palette
        unsigned int biClrImportant; ///< important colours, as stored
    };

    /// Empty: every header field 0, no palette, no pixels.
    CZRB_WinBitmapData();
    /// Deep copy of header, offset, colour count, stride, palette and pixels.
    CZRB_WinBitmapData(const CZRB_WinBitmapData& other);
    /// Deep copy as the copy constructor; returns this object.
    CZRB_WinBitmapData& operator=(const CZRB_WinBitmapData& other);
    /// Frees palette and pixels.
    ~CZRB_WinBitmapData() override;

    /// Frees pixels and palette and sets width, height, bit count and compression to 0.
    void Destroy();

    /// Loads header, palette and pixels of the file at `path`: 0 on success; 30 when the file
    /// cannot be opened or palette or pixels reach past its end; the codes of ReadInfoFromFile
    /// (the header may then be partly overwritten, the rest is kept); 19 when the file lost its
    /// stream. After a palette or pixel failure the object is destroyed (as by Destroy). An
    /// image size of 0 throws CZRB_Exception 9 (the pixel vector as object), kept as shipped.
    unsigned int LoadFromFile(const CZRB_String& path);
    /// Reads the file and info headers of the file at `path` into `header` and, when not null,
    /// the pixel data offset into *dataOffset: 0, 30 when it cannot be opened, else as the
    /// protected form.
    static unsigned int ReadInfoFromFile(const CZRB_String& path, SInfoHeader& header,
                                         unsigned int* dataOffset);

    /// The header.
    const SInfoHeader* GetInfo();
    /// Palette entries of this image: colours used (low 16 bits) when colours used is
    /// non-zero, else 2, 16 or 256 for 1, 4 or 8 bits, else 0.
    unsigned int GetPaletteDepth();
    /// Palette entries announced by `header`, by the rule of GetPaletteDepth().
    static unsigned int GetPaletteDepth(SInfoHeader& header);
    /// The raw palette entry (blue bits 0-7, green 8-15, red 16-23, reserved 24-31); 0 when
    /// the index is not below the palette size.
    unsigned int GetPaletteEntry(unsigned int index);
    /// Palette index of pixel (x, y): 10 without palette, 3 when y >= height or x >= width
    /// (signed), else as GetPixelColorIndexNoCheck (8 unless 1 or 8 bits; code-5 exception
    /// when the byte lies outside the pixel data).
    unsigned int GetPixelColorIndex(unsigned int x, unsigned int y, unsigned int& index);
    /// Colour of pixel (x, y): 3 when y >= height or x >= width (signed); 10 unless the header
    /// is the 40-byte form; without palette 8 unless 24 bits, 3 when the pixel's first byte lies
    /// outside the pixel data, CZRB_Exception 5 (the pixel vector) when only its second or third
    /// byte does; with palette the index as GetPixelColorIndexNoCheck, CZRB_Exception 5 (the
    /// palette) when it is beyond the palette. Reserved gets the entry's bits 24-31, or 0.
    unsigned int GetPixelColor(unsigned int x, unsigned int y, ZRB::t_WinRgbQuad& colour);

protected:
    /// Reads the headers from the open `file`: 11 when it is not open, shorter than 18 bytes,
    /// does not start with "BM", has a header size other than 40, 108 or 124 or is shorter
    /// than 54 bytes; else 0. An image size of 0 is replaced by
    /// ((bit count * width + 31) / 32) * height * 4 in 32-bit arithmetic (kept as shipped: a
    /// negative height makes it huge). The rest of a 108- or 124-byte header is not read.
    static unsigned int ReadInfoFromFile(CZRB_File& file, SInfoHeader& header,
                                         unsigned int* dataOffset);
    /// Palette index of pixel (x, y) without coordinate checks: rows are stored bottom-up
    /// (row height - y - 1, or y when the height is below 1); 8 bits one byte per pixel, 1 bit
    /// most significant bit first; any other depth gives 8. A byte outside the pixel data
    /// throws CZRB_Exception 5 (the pixel vector as object).
    unsigned int GetPixelColorIndexNoCheck(unsigned int x, unsigned int y, unsigned int& index);
    /// Derives colour count and row stride from a 40-byte header (other headers change
    /// nothing): without palette the colour count (1 << bit count, low 16 bits) and the stride
    /// in 32-bit words; with palette the stride in bytes, rounded up to a multiple of 4.
    void SetIntParams();
    /// Deep copy of every member of `other`.
    void DataCopy(const CZRB_WinBitmapData& other);

private:
    /// Palette entries announced by `header` (the rule of GetPaletteDepth).
    static unsigned int PaletteEntries(const SInfoHeader& header);
    /// 1 when the header announces a palette (GetPaletteDepth non-zero).
    static bool HasPalette(const SInfoHeader& header);
    /// The row stored for image row y (bottom-up unless the height is below 1).
    unsigned int StoredRow(unsigned int y) const;
    /// 1 when x or y (taken as signed) is not inside width and height.
    bool IsOutside(unsigned int x, unsigned int y) const;
    /// Reads the palette announced by the header; 0, 19 or 30.
    unsigned int LoadPalette(CZRB_File& file, unsigned __int64 fileLength);
    /// Reads the pixel data announced by the header; 0, 19 or 30.
    unsigned int LoadPixels(CZRB_File& file, unsigned __int64 fileLength);

    SInfoHeader m_header;
    unsigned int m_dataOffset;
    CZRB_Uint32Vector m_palette;
    unsigned int m_colorCount;
    unsigned int m_rowStride;
    CZRB_Uint8Vector m_pixels;
};

#endif
