// The library's string containers and the splitting of a string into them.
#include "CZRB_String.h"

#include <cstring>
#include <functional>

// Exported through the extern declarations in the header.
template class CZRB_Vector<CZRB_String>;
template class CZRB_List<CZRB_String>;

namespace {

using t_Compare = signed char (*)(const CZRB_String&, const CZRB_String&);

t_Compare CompareFor(unsigned char matchCase) {
    return matchCase != 0 ? static_cast<t_Compare>(&CZRB_String::CompareMatchingCase)
                          : static_cast<t_Compare>(&CZRB_String::CompareNoMatchingCase);
}

// Calls field(begin, count) for every field of text[0, length): each separator ends one
// (empty ones included); the text after the last separator is a field only when it is not
// empty. So "a,,b" has three fields, ",a" two, "a," one and "" none.
template <typename Field>
void ForEachTag(const char* text, std::size_t length, char separator, Field field) {
    const char* start = text;
    const char* const end = text + length;
    while (start < end) {
        const auto* stop = static_cast<const char*>(
            std::memchr(start, separator, static_cast<std::size_t>(end - start)));
        if (stop == nullptr) {
            field(start, static_cast<std::size_t>(end - start));
            return;
        }
        field(start, static_cast<std::size_t>(stop - start));
        start = stop + 1;
    }
}

} // namespace

void CZRB_String::ExtractTags(char separator, CZRB_StringVector& out) const {
    if (m_length == 0) {
        out.DeleteAll();
        return;
    }
    const CZRB_String* const first = out.GetBuf();
    const std::less<const CZRB_String*> before; // ordered even across unrelated objects
    if (first != nullptr && !before(this, first) && before(this, first + out.GetLength())) {
        // Splitting one of the vector's own elements: its text must outlive the vector's.
        CZRB_String(*this).ExtractTags(separator, out);
        return;
    }
    unsigned int count = 0;
    ForEachTag(m_buffer, m_length, separator, [&count](const char*, std::size_t) { ++count; });
    // The vector is sized to the field count (at least one: the text is not empty); one that
    // already has that size keeps its elements, which are all overwritten below.
    if (out.GetLength() != count) {
        out.Create(count);
    }
    CZRB_String* field = out.GetBuf();
    ForEachTag(m_buffer, m_length, separator, [&field](const char* begin, std::size_t n) {
        (field++)->AssignFunction(begin, static_cast<unsigned int>(n));
    });
}

void CZRB_String::ExtractTags(char separator, CZRB_StringList& out) const {
    auto split = [&out, separator](const char* text, unsigned int length) {
        out.DeleteAll();
        ForEachTag(text, length, separator, [&out](const char* begin, std::size_t n) {
            out.AppendItem()->AssignFunction(begin, static_cast<unsigned int>(n));
        });
    };
    if (out.GetLength() == 0 || m_length == 0) {
        split(m_buffer, m_length);
        return;
    }
    const CZRB_String copy(*this); // this string may be one of the items freed first
    split(copy.m_buffer, copy.m_length);
}

CZRB_StringVector::~CZRB_StringVector() {}

CZRB_StringVector& CZRB_StringVector::Sort(unsigned char ascending, unsigned char matchCase) {
    CZRB_Vector<CZRB_String>::Sort(CompareFor(matchCase), ascending);
    return *this;
}

CZRB_StringList::~CZRB_StringList() {}

CZRB_StringList& CZRB_StringList::Sort(unsigned char ascending, unsigned char matchCase) {
    CZRB_List<CZRB_String>::Sort(CompareFor(matchCase), ascending);
    return *this;
}
