// zrb bmp topnm: a decoded image written as PAM or binary PPM, for any image viewer.
#ifndef ZRB_TOOL_PNMOUTPUT_H
#define ZRB_TOOL_PNMOUTPUT_H

#include <string>

class CZRB_BitmapDecoder;

namespace zrb {

// Writes the image `decoder` holds to `path` ("-": standard output): PAM (P7, TUPLTYPE
// RGB_ALPHA) when it has alpha, else binary PPM (P6), maximum value 255. Throws ToolError
// naming the output and the system's reason when it cannot be created or a write, the
// flush or the close fails; what was written before stays.
void WritePnm(const CZRB_BitmapDecoder& decoder, const std::string& path);

} // namespace zrb

#endif
