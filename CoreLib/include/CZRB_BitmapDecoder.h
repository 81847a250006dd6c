/// @file
/// CZRB_BitmapDecoder: decodes a Windows BMP file, from a path or from memory, into 8-bit RGBA
/// pixels, row by row from the top-left pixel (0, 0).
#ifndef CZRB_BITMAPDECODER_H
#define CZRB_BITMAPDECODER_H

#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Uint8Vector.h"

/// Decodes a Windows BMP file, from a path or from memory, into 8-bit RGBA pixels, row by
/// row from the top-left pixel (0, 0).
///
/// It reads what current tools write:
///   - info headers of 12 (core), 40, 52, 56, 108 and 124 bytes;
///   - palette images of 1, 2, 4 and 8 bits, uncompressed, RLE8 (8 bits) or RLE4 (4 bits);
///   - direct colour of 16, 24 and 32 bits, with the default layouts (16 bits: 5-5-5, 24 and
///     32 bits: 8-8-8, the fourth byte unused) or with BITFIELDS / ALPHABITFIELDS masks of any
///     contiguous widths (16, 24 and 32 bits);
///   - rows stored bottom-up (positive height) or top-down (negative height).
///
/// Pixel values: a mask channel of n bits becomes 8 bits by repeating its bit pattern (n < 8;
/// 5 bits: (v << 3) | (v >> 2)) or by keeping its top 8 bits (n > 8); an empty mask gives 0,
/// and alpha is 255 unless an alpha mask is in effect. The fourth byte of a 32-bit BI_RGB
/// pixel and of a palette entry is not alpha (by design: writers leave it 0). A palette index
/// beyond the colour table is opaque black. Pixels that compressed data skips (delta, end of
/// line, end of bitmap) take palette entry 0; runs that reach past the row end are cut at it,
/// and data below the last row is ignored.
///
/// Every load returns an unsigned result code, 0 for success:
/// - 1  LoadFromFile: the file could not be opened
/// - 8  not supported: bit count, compression or their combination is not decoded here
/// - 11 not a BMP: no "BM" signature (or no data), an unknown info header size, a width below
///   1 or a height of 0
/// - 12 the bitmap holds an embedded JPEG image (compression 4)
/// - 13 the bitmap holds an embedded PNG image (compression 5)
/// - 14 width * height is above the pixel limit
/// - 15 corrupt: a mask that is not one contiguous run of bits inside the pixel, or pixel data
///   that starts inside the headers
/// - 30 the file is shorter than its headers, colour table, masks or pixel data announce (for
///   compressed data: the announced image size, or the stream ends before the last row),
///   or a read failed
///
/// Sizes a file announces are checked against its real length before anything is allocated;
/// the largest allocation is 4 bytes per pixel of an image within the pixel limit.
///
/// The pixel limit (DEFAULT_PIXEL_LIMIT unless set) caps width * height; it is never above
/// MAX_PIXEL_LIMIT, the most pixels whose RGBA bytes a byte vector can hold.
class LZRB_API CZRB_BitmapDecoder : public CZRB_Object {
public:
    /// @name Result codes of LoadFromFile and LoadFromMemory (see above)
    /// @{
    static constexpr unsigned int RESULT_OK = 0;             ///< decoded
    static constexpr unsigned int RESULT_CANNOT_OPEN = 1;    ///< the file could not be opened
    static constexpr unsigned int RESULT_UNSUPPORTED = 8;    ///< not decoded here
    static constexpr unsigned int RESULT_NOT_BITMAP = 11;    ///< not a BMP
    static constexpr unsigned int RESULT_EMBEDDED_JPEG = 12; ///< holds an embedded JPEG image
    static constexpr unsigned int RESULT_EMBEDDED_PNG = 13;  ///< holds an embedded PNG image
    static constexpr unsigned int RESULT_TOO_LARGE = 14;     ///< above the pixel limit
    static constexpr unsigned int RESULT_CORRUPT = 15;       ///< a bad mask or pixel data offset
    static constexpr unsigned int RESULT_TRUNCATED = 30;     ///< truncated, or a read failed
    /// @}

    /// @name Compression values of the info header
    /// @{
    static constexpr unsigned int COMPRESSION_RGB = 0;       ///< uncompressed
    static constexpr unsigned int COMPRESSION_RLE8 = 1;      ///< run-length encoded, 8 bits
    static constexpr unsigned int COMPRESSION_RLE4 = 2;      ///< run-length encoded, 4 bits
    static constexpr unsigned int COMPRESSION_BITFIELDS = 3; ///< colour masks follow the header
    static constexpr unsigned int COMPRESSION_JPEG = 4;      ///< an embedded JPEG image
    static constexpr unsigned int COMPRESSION_PNG = 5;       ///< an embedded PNG image
    static constexpr unsigned int COMPRESSION_ALPHABITFIELDS = 6; ///< colour and alpha masks follow
    /// @}

    /// 64 Mi pixels (for example 8192 x 8192), 256 MiB of RGBA.
    static constexpr unsigned int DEFAULT_PIXEL_LIMIT = 1U << 26;
    /// The most pixels whose 4 bytes each fit a byte vector.
    static constexpr unsigned int MAX_PIXEL_LIMIT = 0x3FFFFFFFU;

    /// What the headers of the last file said. Fields the file does not have (a core header
    /// has no compression, sizes, resolutions or colour counts) are 0; the core header's
    /// 16-bit width and height are widened.
    struct t_Header {
        unsigned int fileSize;        ///< file header bytes 2-5, as stored (never checked)
        unsigned int dataOffset;      ///< file header bytes 10-13: where the pixel data starts
        unsigned int headerSize;      ///< info header size: 12, 40, 52, 56, 108 or 124
        int width;                    ///< as stored
        int height;                   ///< as stored; negative for rows stored top-down
        unsigned short planes;        ///< as stored (not checked)
        unsigned short bitCount;      ///< bits per pixel
        unsigned int compression;     ///< COMPRESSION_...
        unsigned int imageSize;       ///< as stored; bytes of compressed pixel data
        int xPelsPerMeter;            ///< as stored: horizontal pixels per metre
        int yPelsPerMeter;            ///< as stored: vertical pixels per metre
        unsigned int colorsUsed;      ///< as stored
        unsigned int colorsImportant; ///< as stored
        unsigned int paletteEntries;  ///< colour table entries in use (palette images only)

        /// @name Masks in effect for 16, 24 and 32 bits
        /// The defaults when the file gives none, 0 for palette images; the alpha mask is 0
        /// unless one is in effect.
        /// @{
        unsigned int redMask;   ///< red
        unsigned int greenMask; ///< green
        unsigned int blueMask;  ///< blue
        unsigned int alphaMask; ///< alpha
        /// @}
    };

    /// Empty: no pixels, width and height 0, header all 0, DEFAULT_PIXEL_LIMIT.
    CZRB_BitmapDecoder();
    /// Deep copy of header, pixels and pixel limit.
    CZRB_BitmapDecoder(const CZRB_BitmapDecoder& other);
    /// Deep copy as the copy constructor; returns this object.
    CZRB_BitmapDecoder& operator=(const CZRB_BitmapDecoder& other);
    /// Frees the pixels.
    ~CZRB_BitmapDecoder() override;

    /// Decodes the BMP file at `path` (read through CZRB_File; only the headers and the pixel
    /// data are read). Returns a code above. On failure there are no pixels, width and height
    /// are 0 and the header holds what was read before the failure.
    unsigned int LoadFromFile(const CZRB_String& path);
    /// Decodes the `length` bytes at `data` as a BMP file; the same codes as LoadFromFile but
    /// 1 (null `data` gives 11). The bytes are not kept.
    unsigned int LoadFromMemory(const void* data, unsigned __int64 length);
    /// Frees the pixels and clears the header; the pixel limit stays.
    void Destroy();

    /// Sets the most pixels (width * height) a load accepts; values above MAX_PIXEL_LIMIT
    /// become MAX_PIXEL_LIMIT. Returns this object.
    CZRB_BitmapDecoder& SetPixelLimit(unsigned int limit);
    /// The pixel limit.
    unsigned int GetPixelLimit() const;

    /// Width of the decoded image in pixels; 0 when nothing is decoded.
    unsigned int GetWidth() const;
    /// Height of the decoded image in pixels (always positive); 0 when nothing is decoded.
    unsigned int GetHeight() const;
    /// 1 when the decoded image has an alpha channel (an alpha mask in effect), else 0.
    /// Without one every alpha byte is 255.
    unsigned char HasAlpha() const;
    /// The headers of the last load (see t_Header).
    const t_Header& GetHeader() const;
    /// The pixels: width * height * 4 bytes red, green, blue, alpha; rows from the top, each
    /// row from the left, no padding. Empty when nothing is decoded.
    const CZRB_Uint8Vector& GetPixels() const;
    /// Colour of pixel (x, y), (0, 0) the top-left: 0, or 3 when x or y is outside the image
    /// (`colour` unchanged). Reserved gets the alpha value.
    unsigned int GetPixelColor(unsigned int x, unsigned int y, ZRB::t_WinRgbQuad& colour) const;

protected:
    /// Deep copy of every member of `other`.
    void DataCopy(const CZRB_BitmapDecoder& other);

private:
    t_Header m_header;
    unsigned int m_width;
    unsigned int m_height;
    unsigned int m_pixelLimit;
    CZRB_Uint8Vector m_pixels;
};

#endif
