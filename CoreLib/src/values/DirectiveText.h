// Expansion of the one-letter "%" directives shared by date and time formats.
#ifndef LZRB_DIRECTIVE_TEXT_H
#define LZRB_DIRECTIVE_TEXT_H

#include "CZRB_String.h"

namespace ZRB_Detail {

// Size of the work area a field writer fills (with its terminating zero).
constexpr unsigned int DIRECTIVE_FIELD_SIZE = 16;

// Copies `format`, replacing each "%x" by the text `writeField(x, field)` leaves in `field`
// when it returns true. "%%" gives "%", an unknown directive is copied with its "%", and a
// lone "%" at the end is dropped.
template <class FieldWriter>
CZRB_String ExpandDirectives(const CZRB_String& format, FieldWriter writeField) {
    CZRB_String text;
    const unsigned int length = format.GetLength();
    for (unsigned int i = 0; i < length; ++i) {
        const char c = format.GetChar(i);
        if (c != '%') {
            text += c;
            continue;
        }
        if (++i == length)
            break;
        const char directive = format.GetChar(i);
        char field[DIRECTIVE_FIELD_SIZE];
        if (writeField(directive, field)) {
            text += field;
            continue;
        }
        if (directive != '%')
            text += '%';
        text += directive;
    }
    return text;
}

} // namespace ZRB_Detail

#endif
