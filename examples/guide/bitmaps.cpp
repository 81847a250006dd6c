// Bitmaps: a 2 x 2 image with a two-colour palette is written byte by byte, loaded and asked
// for its pixels. Rows are stored bottom-up, so pixel (0, 0) is in the last stored row.
#include <CZRB_File.h>
#include <CZRB_WinBitmapData.h>

#include <cstdio>

int main() {
    const auto little = ZRB::BYTE_ORDER_LITTLE_ENDIAN;
    CZRB_Uint8Vector bmp(70U, 0); // file header 14, info header 40, palette 8, pixels 8
    bmp[0] = 'B';
    bmp[1] = 'M';
    bmp.SetUint32(70U, 2, little);        // file size
    bmp.SetUint32(62U, 10, little);       // offset of the pixels
    bmp.SetUint32(40U, 14, little);       // info header size
    bmp.SetInt32(2, 18, little);          // width
    bmp.SetInt32(2, 22, little);          // height (positive: bottom-up)
    bmp.SetUint16(1, 26, little);         // planes
    bmp.SetUint16(8, 28, little);         // bits per pixel
    bmp.SetUint32(2U, 46, little);        // colours used
    bmp.SetUint32(0x000080U, 54, little); // palette 0: navy (blue in the low byte)
    bmp.SetUint32(0xFFA500U, 58, little); // palette 1: orange
    bmp[62] = 1;                          // bottom row: orange, navy (rows padded to 4 bytes)
    bmp[67] = 1;                          // top row: navy, orange

    const CZRB_String path("guide_small.bmp");
    CZRB_File file;
    file.Open(path, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
    file.Write(bmp.GetBuf(), bmp.GetLength(), 1);
    file.Close();

    CZRB_WinBitmapData image;
    const unsigned int loaded = image.LoadFromFile(path);
    std::printf("load: %u, %d x %d, %u bits, %u palette entries\n", loaded,
                image.GetInfo()->biWidth, image.GetInfo()->biHeight, image.GetInfo()->biBitCount,
                image.GetPaletteDepth());
    for (unsigned int y = 0; y < 2; ++y) {
        for (unsigned int x = 0; x < 2; ++x) {
            unsigned int index = 0;
            ZRB::t_WinRgbQuad colour = {};
            image.GetPixelColorIndex(x, y, index);
            image.GetPixelColor(x, y, colour);
            std::printf("(%u, %u): index %u, red %u green %u blue %u\n", x, y, index, colour.Red,
                        colour.Green, colour.Blue);
        }
    }
    ZRB::t_WinRgbQuad outside = {};
    std::printf("pixel (2, 0): %u; a missing file: %u\n", image.GetPixelColor(2, 0, outside),
                CZRB_WinBitmapData().LoadFromFile("guide_missing.bmp"));
    CZRB_File::DeleteFile(path);
    return 0;
}
