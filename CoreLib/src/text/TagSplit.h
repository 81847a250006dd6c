// Splitting text into fields at a separator, shared by CZRB_String::ExtractTags and the CSV
// reader so that both count and cut fields the same way.
#ifndef LZRB_TAG_SPLIT_H
#define LZRB_TAG_SPLIT_H

#include <cstddef>
#include <cstring>

namespace ZRB_Detail {

// Calls field(begin, count) for every field of text[0, length): each separator ends one
// (empty ones included); the text after the last separator is a field only when it is not
// empty. So "a,,b" has three fields, ",a" two, "a," one and "" none.
template <typename Char, typename Field>
void ForEachTag(Char* text, std::size_t length, char separator, Field field) {
    Char* start = text;
    Char* const end = text + length;
    while (start < end) {
        auto* found = std::memchr(start, separator, static_cast<std::size_t>(end - start));
        if (found == nullptr) {
            field(start, static_cast<std::size_t>(end - start));
            return;
        }
        Char* stop = static_cast<Char*>(found);
        field(start, static_cast<std::size_t>(stop - start));
        start = stop + 1;
    }
}

// The number of fields ForEachTag finds.
inline std::size_t CountTags(const char* text, std::size_t length, char separator) {
    std::size_t count = 0;
    ForEachTag(text, length, separator, [&count](const char*, std::size_t) { ++count; });
    return count;
}

} // namespace ZRB_Detail

#endif
