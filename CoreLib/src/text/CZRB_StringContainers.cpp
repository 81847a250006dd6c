// The library's string containers and the splitting of a string into them.
#include "CZRB_String.h"

// Exported through the extern declarations in the header.
template class CZRB_Vector<CZRB_String>;
template class CZRB_List<CZRB_String>;

namespace {

using t_Compare = signed char (*)(const CZRB_String&, const CZRB_String&);

t_Compare CompareFor(unsigned char matchCase) {
    return matchCase != 0 ? static_cast<t_Compare>(&CZRB_String::CompareMatchingCase)
                          : static_cast<t_Compare>(&CZRB_String::CompareNoMatchingCase);
}

// Calls field(begin, count) for every field: each separator ends one (empty ones included);
// the text after the last separator is a field only when it is not empty.
template <typename Field>
void ForEachTag(const char* text, unsigned int length, char separator, Field field) {
    unsigned int start = 0;
    for (unsigned int i = 0; i < length; ++i) {
        if (text[i] == separator) {
            field(text + start, i - start);
            start = i + 1;
        }
    }
    if (start < length) {
        field(text + start, length - start);
    }
}

} // namespace

void CZRB_String::ExtractTags(char separator, CZRB_StringVector& out) const {
    if (m_length == 0) {
        out.DeleteAll();
        return;
    }
    unsigned int count = 0;
    ForEachTag(m_buffer, m_length, separator, [&count](const char*, unsigned int) { ++count; });
    out.Create(count); // at least one field: the text is not empty
    unsigned int index = 0;
    ForEachTag(m_buffer, m_length, separator, [&out, &index](const char* begin, unsigned int n) {
        out[index++] = CZRB_String(begin, n);
    });
}

void CZRB_String::ExtractTags(char separator, CZRB_StringList& out) const {
    out.DeleteAll();
    ForEachTag(m_buffer, m_length, separator, [&out](const char* begin, unsigned int n) {
        out.AppendItem(CZRB_String(begin, n));
    });
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
