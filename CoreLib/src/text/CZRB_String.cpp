#include "CZRB_String.h"

#include "CZRB_Exception.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>

namespace {

char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

char ToUpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

// A fresh buffer of count + 1 bytes with only the terminator set.
char* AllocateBytes(unsigned int count) {
    char* bytes = new char[static_cast<size_t>(count) + 1];
    bytes[count] = 0;
    return bytes;
}

// Room for a string grown step by step to `length` characters: at least twice the old room,
// so that n appends cost O(n) in total, yet never more than twice the new length.
unsigned int GrownCapacity(unsigned int capacity, unsigned int length) {
    const unsigned long long doubled = 2ULL * capacity;
    if (doubled <= length) {
        return length;
    }
    return doubled < 0xFFFFFFFFULL ? static_cast<unsigned int>(doubled) : 0xFFFFFFFFU;
}

// The sum of two lengths; a string longer than 32 bits cannot be allocated.
unsigned int SumOfLengths(unsigned int a, unsigned int b) {
    if (b > 0xFFFFFFFFU - a) {
        throw std::bad_alloc();
    }
    return a + b;
}

// True when the 32-bit difference, taken as a signed value, is positive.
bool IsPositiveAsSigned(unsigned int difference) {
    return difference != 0 && difference <= 0x7FFFFFFFU;
}

// The ordering rule over zero-terminated texts: signed bytes, a text that ends first is less.
signed char CompareTexts(const char* a, const char* b, bool foldToUpper) {
    for (;; ++a, ++b) {
        const char ca = foldToUpper ? ToUpperAscii(*a) : *a;
        const char cb = foldToUpper ? ToUpperAscii(*b) : *b;
        if (ca == 0 || cb == 0) {
            if (ca == cb) {
                return 0;
            }
            return ca == 0 ? -1 : 1;
        }
        if (ca != cb) {
            return static_cast<signed char>(ca) < static_cast<signed char>(cb) ? -1 : 1;
        }
    }
}

const char* TextOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

// The character equality of IsCharsEqual: exact, or ASCII-folded to lower when matchCase is 0.
bool CharsEqual(char a, char b, unsigned char matchCase) {
    return matchCase != 0 ? a == b : ToLowerAscii(a) == ToLowerAscii(b);
}

// Whether the `count` characters of `pattern` stand at `text`, compared by CharsEqual.
bool MatchesAt(const char* text, const char* pattern, unsigned int count, unsigned char matchCase) {
    if (matchCase != 0) {
        return std::memcmp(text, pattern, count) == 0;
    }
    for (unsigned int j = 0; j < count; ++j) {
        if (!CharsEqual(text[j], pattern[j], matchCase)) {
            return false;
        }
    }
    return true;
}

// The success of every search: the position to *pos when asked for, and 1.
unsigned char FoundAt(unsigned int* pos, unsigned int at) {
    if (pos != nullptr) {
        *pos = at;
    }
    return 1;
}

} // namespace

// --- Construction and assignment ---

CZRB_String::CZRB_String() : m_buffer(m_inline), m_length(0), m_capacity(kInlineRoom) {
    m_inline[0] = 0;
}

CZRB_String::CZRB_String(const CZRB_String& other) : CZRB_String(other.m_buffer, other.m_length) {}

CZRB_String::CZRB_String(const char* text) : CZRB_String(TextOrEmpty(text), CS_GetLength(text)) {}

CZRB_String::CZRB_String(const char* data, unsigned int count) : CZRB_String() {
    if (data != nullptr && count != 0) {
        NewBuffer(count);
        std::memcpy(m_buffer, data, count);
    }
}

CZRB_String::CZRB_String(char c) : CZRB_String(1, c) {}

CZRB_String::CZRB_String(unsigned int count, char c) : CZRB_String() {
    NewBuffer(count);
    std::memset(m_buffer, c, count);
}

CZRB_String::~CZRB_String() {
    DeleteBuffer();
}

CZRB_String& CZRB_String::operator=(const CZRB_String& other) {
    DataCopy(other);
    return *this;
}

CZRB_String& CZRB_String::operator=(const char* text) {
    AssignFunction(TextOrEmpty(text), CS_GetLength(text));
    return *this;
}

CZRB_String& CZRB_String::operator=(char c) {
    AssignFunction(&c, 1);
    return *this;
}

CZRB_String& CZRB_String::Build(unsigned int count, char c) {
    NewBuffer(count);
    std::memset(m_buffer, c, count);
    return *this;
}

CZRB_String& CZRB_String::SetLength(unsigned int length, char fill) {
    if (length == m_length) {
        return *this;
    }
    char* fresh = AllocateBytes(length);
    const unsigned int kept = length < m_length ? length : m_length;
    std::memcpy(fresh, m_buffer, kept);
    std::memset(fresh + kept, fill, length - kept);
    AdoptFunction(fresh, length, length);
    return *this;
}

void CZRB_String::ToStringC(char* dst) const {
    std::memcpy(dst, m_buffer, m_length + size_t{1});
}

void CZRB_String::NewBuffer(unsigned int length) {
    if (length == m_length && length != 0) {
        return;
    }
    if (length <= kInlineRoom) {
        UseInlineFunction(length);
        return;
    }
    AdoptFunction(AllocateBytes(length), length, length);
}

void CZRB_String::DeleteBuffer() {
    FreeHeapFunction();
    m_buffer = nullptr;
    m_length = 0;
    m_capacity = 0;
}

void CZRB_String::ClearBuffer() {
    if (m_length != 0) {
        NewBuffer(0);
    }
}

void CZRB_String::DataCopy(const CZRB_String& other) {
    if (this != &other) {
        AssignFunction(other.m_buffer, other.m_length);
    }
}

unsigned char CZRB_String::IsCharsEqual(const char& a, const char& b, unsigned char matchCase) {
    return CharsEqual(a, b, matchCase) ? 1 : 0;
}

void CZRB_String::AssignFunction(const char* data, unsigned int count) {
    if (count == m_length && count != 0) {
        std::memmove(m_buffer, data, count);
        return;
    }
    if (count <= kInlineRoom) {
        // The source may lie inside the inline room or the heap buffer; the latter goes last.
        std::memmove(m_inline, data, count);
        UseInlineFunction(count);
        return;
    }
    // The source is copied before the old buffer goes, so it may lie inside it.
    char* fresh = AllocateBytes(count);
    std::memcpy(fresh, data, count);
    AdoptFunction(fresh, count, count);
}

void CZRB_String::ConcatFunction(const char* a, unsigned int aCount, const char* b,
                                 unsigned int bCount) {
    const unsigned int length = SumOfLengths(aCount, bCount);
    char* fresh = AllocateBytes(length);
    std::memcpy(fresh, a, aCount);
    std::memcpy(fresh + aCount, b, bCount);
    AdoptFunction(fresh, length, length);
}

void CZRB_String::AppendFunction(const char* data, unsigned int count) {
    const unsigned int length = SumOfLengths(m_length, count);
    if (length <= m_capacity) {
        std::memmove(m_buffer + m_length, data, count);
        m_buffer[length] = 0;
        m_length = length;
        return;
    }
    InsertFunction(m_length, data, count);
}

void CZRB_String::InsertFunction(unsigned int pos, const char* data, unsigned int count) {
    const unsigned int length = SumOfLengths(m_length, count);
    const std::less<const char*> before;
    const bool fromInside = !before(data, m_buffer) && before(data, m_buffer + m_capacity + 1);
    if (length <= m_capacity && (!fromInside || pos == m_length)) {
        // Room enough: the tail (terminator included) moves up and the text goes in.
        std::memmove(m_buffer + pos + count, m_buffer + pos, m_length - pos + size_t{1});
        std::memmove(m_buffer + pos, data, count);
        m_length = length;
        return;
    }
    // The text is copied before the old buffer goes, so it may lie inside it.
    const unsigned int capacity =
        length <= m_capacity ? m_capacity : GrownCapacity(m_capacity, length);
    char* fresh = AllocateBytes(capacity);
    std::memcpy(fresh, m_buffer, pos);
    std::memcpy(fresh + pos, data, count);
    std::memcpy(fresh + pos + count, m_buffer + pos, m_length - pos);
    AdoptFunction(fresh, length, capacity);
}

void CZRB_String::UseInlineFunction(unsigned int length) {
    FreeHeapFunction();
    m_buffer = m_inline;
    m_length = length;
    m_capacity = kInlineRoom;
    m_inline[length] = 0;
}

void CZRB_String::FreeHeapFunction() {
    if (m_buffer != m_inline) {
        delete[] m_buffer;
    }
}

void CZRB_String::AdoptFunction(char* fresh, unsigned int length, unsigned int capacity) {
    FreeHeapFunction();
    m_buffer = fresh;
    m_length = length;
    m_capacity = capacity;
    m_buffer[length] = 0;
}

// --- Zero-terminated helpers ---

unsigned int CZRB_String::CS_GetLength(const char* text) {
    return text != nullptr ? static_cast<unsigned int>(std::strlen(text)) : 0;
}

char* CZRB_String::CS_Copy(char* dst, const char* src) {
    return std::strcpy(dst, TextOrEmpty(src));
}

signed char CZRB_String::CS_Compare(const char* a, const char* b) {
    return CompareTexts(TextOrEmpty(a), TextOrEmpty(b), false);
}

// --- Characters ---

unsigned int CZRB_String::GetLength() const {
    return m_length;
}

const char* CZRB_String::GetStringC() const {
    return m_buffer;
}

char CZRB_String::GetChar(unsigned int index) const {
    return index < m_length ? m_buffer[index] : 0;
}

CZRB_String& CZRB_String::SetChar(unsigned int index, char c) {
    if (index < m_length) {
        m_buffer[index] = c;
    }
    return *this;
}

// --- Concatenation ---

CZRB_String CZRB_String::operator+(const CZRB_String& other) const {
    CZRB_String result;
    result.ConcatFunction(m_buffer, m_length, other.m_buffer, other.m_length);
    return result;
}

CZRB_String CZRB_String::operator+(const char* text) const {
    CZRB_String result;
    result.ConcatFunction(m_buffer, m_length, TextOrEmpty(text), CS_GetLength(text));
    return result;
}

CZRB_String CZRB_String::operator+(char c) const {
    CZRB_String result;
    result.ConcatFunction(m_buffer, m_length, &c, 1);
    return result;
}

CZRB_String& CZRB_String::operator+=(const CZRB_String& other) {
    if (other.m_length != 0) {
        AppendFunction(other.m_buffer, other.m_length);
    }
    return *this;
}

CZRB_String& CZRB_String::operator+=(const char* text) {
    const unsigned int count = CS_GetLength(text);
    if (count != 0) {
        AppendFunction(text, count);
    }
    return *this;
}

LZRB_API CZRB_String operator+(char c, const CZRB_String& s) {
    return CZRB_String(c) + s;
}

LZRB_API CZRB_String operator+(const char* text, const CZRB_String& s) {
    return CZRB_String(text) + s;
}

// --- Substrings ---

CZRB_String CZRB_String::Left(unsigned int count) const {
    return CZRB_String(m_buffer, count < m_length ? count : m_length);
}

CZRB_String CZRB_String::Right(unsigned int count) const {
    const unsigned int kept = count < m_length ? count : m_length;
    return CZRB_String(m_buffer + (m_length - kept), kept);
}

CZRB_String CZRB_String::RightFromPos(unsigned int pos) const {
    if (pos >= m_length) {
        return CZRB_String();
    }
    return CZRB_String(m_buffer + pos, m_length - pos);
}

CZRB_String CZRB_String::Mid(unsigned int pos, unsigned int count) const {
    if (pos >= m_length || count == 0) {
        return CZRB_String();
    }
    const unsigned int available = m_length - pos;
    return CZRB_String(m_buffer + pos, count < available ? count : available);
}

CZRB_String& CZRB_String::ResizeLeft(unsigned int count) {
    if (count < m_length) {
        AssignFunction(m_buffer, count);
    }
    return *this;
}

CZRB_String& CZRB_String::ResizeRight(unsigned int count) {
    if (count < m_length) {
        AssignFunction(m_buffer + (m_length - count), count);
    }
    return *this;
}

CZRB_String& CZRB_String::ResizeRightFromPos(unsigned int pos) {
    if (pos >= m_length) {
        ClearBuffer();
    } else if (pos != 0) {
        AssignFunction(m_buffer + pos, m_length - pos);
    }
    return *this;
}

CZRB_String& CZRB_String::ResizeMid(unsigned int pos, unsigned int count) {
    if (pos >= m_length || count == 0) {
        ClearBuffer();
        return *this;
    }
    const unsigned int available = m_length - pos;
    const unsigned int kept = count < available ? count : available;
    if (kept != m_length) {
        AssignFunction(m_buffer + pos, kept);
    }
    return *this;
}

// --- Editing ---

CZRB_String& CZRB_String::Insert(char c, unsigned int pos) {
    if (pos <= m_length) {
        InsertFunction(pos, &c, 1);
    }
    return *this;
}

CZRB_String& CZRB_String::Insert(const CZRB_String& s, unsigned int pos, unsigned int from,
                                 unsigned int count) {
    unsigned int n = s.m_length < count ? s.m_length : count;
    // Kept as shipped: the start is checked against the clipped count, not s's length.
    if (from >= n || pos > m_length) {
        return *this;
    }
    if (n > s.m_length - from) {
        n = s.m_length - from;
    }
    InsertFunction(pos, s.m_buffer + from, n);
    return *this;
}

CZRB_String& CZRB_String::RemoveChars(unsigned int pos, unsigned int count) {
    if (count == 0 || pos > m_length) {
        return *this;
    }
    if (count > m_length - pos) {
        count = m_length - pos;
    }
    const unsigned int length = m_length - count;
    if (m_capacity <= 2ULL * length) {
        // The spare room stays below the text: the tail (terminator included) moves down.
        std::memmove(m_buffer + pos, m_buffer + pos + count, length - pos + size_t{1});
        m_length = length;
        return *this;
    }
    char* fresh = AllocateBytes(length);
    std::memcpy(fresh, m_buffer, pos);
    std::memcpy(fresh + pos, m_buffer + pos + count, length - pos);
    AdoptFunction(fresh, length, length);
    return *this;
}

CZRB_String& CZRB_String::RemoveChar(char c) {
    unsigned int kept = 0;
    for (unsigned int i = 0; i < m_length; ++i) {
        kept += m_buffer[i] != c ? 1 : 0;
    }
    if (kept == m_length) {
        return *this;
    }
    char* fresh = AllocateBytes(kept);
    for (unsigned int i = 0, j = 0; i < m_length; ++i) {
        if (m_buffer[i] != c) {
            fresh[j++] = m_buffer[i];
        }
    }
    AdoptFunction(fresh, kept, kept);
    return *this;
}

CZRB_String& CZRB_String::ReplaceChar(char a, char b) {
    for (unsigned int i = 0; i < m_length; ++i) {
        if (m_buffer[i] == a) {
            m_buffer[i] = b;
        }
    }
    return *this;
}

CZRB_String& CZRB_String::ReplaceChars(const CZRB_String& s, unsigned int pos, unsigned int from,
                                       unsigned int count) {
    const unsigned int n = s.m_length < count ? s.m_length : count;
    return ReplaceString(s, pos, n, from, n);
}

CZRB_String& CZRB_String::ReplaceString(const CZRB_String& s, unsigned int pos,
                                        unsigned int removeCount, unsigned int from,
                                        unsigned int count) {
    // Left(pos) + s.Mid(from, min(s.length, count)) + Right(rest), assembled in one go.
    const unsigned int leftCount = pos < m_length ? pos : m_length;
    const unsigned int wanted = s.m_length < count ? s.m_length : count;
    unsigned int midCount = 0;
    const char* mid = s.m_buffer;
    if (from < s.m_length) {
        const unsigned int available = s.m_length - from;
        midCount = wanted < available ? wanted : available;
        mid += from;
    }
    const unsigned int rest = m_length - pos - removeCount;
    const unsigned int rightCount =
        IsPositiveAsSigned(rest) ? (rest < m_length ? rest : m_length) : 0;
    const unsigned int length = SumOfLengths(SumOfLengths(leftCount, midCount), rightCount);
    if (length == m_length && length != 0) {
        // The assignment rule keeps the buffer; left and right parts are already in place.
        std::memmove(m_buffer + leftCount, mid, midCount);
        return *this;
    }
    char* fresh = AllocateBytes(length);
    std::memcpy(fresh, m_buffer, leftCount);
    std::memcpy(fresh + leftCount, mid, midCount);
    std::memcpy(fresh + leftCount + midCount, m_buffer + (m_length - rightCount), rightCount);
    AdoptFunction(fresh, length, length);
    return *this;
}

CZRB_String& CZRB_String::Trim(char c, unsigned int sides) {
    unsigned int begin = 0;
    unsigned int end = m_length;
    if ((sides & 1U) != 0) {
        while (begin < end && m_buffer[begin] == c) {
            ++begin;
        }
    }
    if ((sides & 2U) != 0) {
        while (end > begin && m_buffer[end - 1] == c) {
            --end;
        }
    }
    if (end - begin != m_length) {
        AssignFunction(m_buffer + begin, end - begin);
    }
    return *this;
}

CZRB_String& CZRB_String::SetCase(unsigned int mode) {
    if (mode > 1) {
        return *this;
    }
    for (unsigned int i = 0; i < m_length; ++i) {
        m_buffer[i] = mode == 0 ? ToLowerAscii(m_buffer[i]) : ToUpperAscii(m_buffer[i]);
    }
    return *this;
}

// --- Searching ---

unsigned char CZRB_String::FindFromBegin(char c, unsigned int* pos, unsigned int start) const {
    if (start >= m_length) {
        return 0;
    }
    const void* found = std::memchr(m_buffer + start, c, m_length - start);
    if (found == nullptr) {
        return 0;
    }
    return FoundAt(pos, static_cast<unsigned int>(static_cast<const char*>(found) - m_buffer));
}

unsigned char CZRB_String::FindFromBegin(const CZRB_String& s, unsigned int* pos,
                                         unsigned char matchCase, unsigned int start) const {
    if (s.m_length == 0 || s.m_length > m_length) {
        return 0;
    }
    const unsigned int last = m_length - s.m_length; // the last candidate that still fits
    for (unsigned int i = start; i <= last; ++i) {
        if (matchCase != 0) {
            // Exact bytes: jump to the next candidate that starts with the first byte.
            const void* next = std::memchr(m_buffer + i, s.m_buffer[0], last - i + 1);
            if (next == nullptr) {
                return 0;
            }
            i = static_cast<unsigned int>(static_cast<const char*>(next) - m_buffer);
        }
        if (MatchesAt(m_buffer + i, s.m_buffer, s.m_length, matchCase)) {
            return FoundAt(pos, i);
        }
    }
    return 0;
}

unsigned char CZRB_String::FindFromEnd(char c, unsigned int* pos, unsigned int start) const {
    if (m_length == 0) {
        return 0;
    }
    // Kept as shipped: a start equal to the length is not clamped (the scan reads the
    // terminator first).
    unsigned int i = start > m_length ? m_length - 1 : start;
    for (;; --i) {
        if (m_buffer[i] == c) {
            return FoundAt(pos, i);
        }
        if (i == 0) {
            return 0;
        }
    }
}

unsigned char CZRB_String::FindFromEnd(const CZRB_String& s, unsigned int* pos,
                                       unsigned char matchCase, unsigned int start) const {
    if (m_length == 0) {
        return 0;
    }
    // Kept as shipped: unlike FindFromBegin there is no test for an empty s, so an empty s
    // matches at once at the clamped start (index length when start equals the length).
    unsigned int i = start > m_length ? m_length - 1 : start;
    for (;; --i) {
        // A candidate whose characters would reach the terminator fails.
        if (s.m_length <= m_length - i &&
            MatchesAt(m_buffer + i, s.m_buffer, s.m_length, matchCase)) {
            return FoundAt(pos, i);
        }
        if (i == 0) {
            return 0;
        }
    }
}

// --- Comparison ---

signed char CZRB_String::CompareMatchingCase(const CZRB_String& other) const {
    return CompareTexts(m_buffer, other.m_buffer, false);
}

signed char CZRB_String::CompareMatchingCase(const CZRB_String& a, const CZRB_String& b) {
    return a.CompareMatchingCase(b);
}

signed char CZRB_String::CompareNoMatchingCase(const CZRB_String& other) const {
    return CompareTexts(m_buffer, other.m_buffer, true);
}

signed char CZRB_String::CompareNoMatchingCase(const CZRB_String& a, const CZRB_String& b) {
    return a.CompareNoMatchingCase(b);
}

unsigned char CZRB_String::operator==(const CZRB_String& other) const {
    return CompareMatchingCase(other) == 0 ? 1 : 0;
}
unsigned char CZRB_String::operator!=(const CZRB_String& other) const {
    return CompareMatchingCase(other) != 0 ? 1 : 0;
}
unsigned char CZRB_String::operator<(const CZRB_String& other) const {
    return CompareMatchingCase(other) < 0 ? 1 : 0;
}
unsigned char CZRB_String::operator<=(const CZRB_String& other) const {
    return CompareMatchingCase(other) <= 0 ? 1 : 0;
}
unsigned char CZRB_String::operator>(const CZRB_String& other) const {
    return CompareMatchingCase(other) > 0 ? 1 : 0;
}
unsigned char CZRB_String::operator>=(const CZRB_String& other) const {
    return CompareMatchingCase(other) >= 0 ? 1 : 0;
}

LZRB_API unsigned char operator==(const char* left, const CZRB_String& right) {
    return CZRB_String::CS_Compare(left, right.GetStringC()) == 0 ? 1 : 0;
}
LZRB_API unsigned char operator!=(const char* left, const CZRB_String& right) {
    return CZRB_String::CS_Compare(left, right.GetStringC()) != 0 ? 1 : 0;
}
LZRB_API unsigned char operator<(const char* left, const CZRB_String& right) {
    return CZRB_String::CS_Compare(left, right.GetStringC()) < 0 ? 1 : 0;
}
LZRB_API unsigned char operator<=(const char* left, const CZRB_String& right) {
    return CZRB_String::CS_Compare(left, right.GetStringC()) <= 0 ? 1 : 0;
}
LZRB_API unsigned char operator>(const char* left, const CZRB_String& right) {
    return CZRB_String::CS_Compare(left, right.GetStringC()) > 0 ? 1 : 0;
}
LZRB_API unsigned char operator>=(const char* left, const CZRB_String& right) {
    return CZRB_String::CS_Compare(left, right.GetStringC()) >= 0 ? 1 : 0;
}

// --- Numbers to text ---

CZRB_String CZRB_String::FromNumber(long long value) {
    CZRB_String result;
    result.Format("%lld", value);
    return result;
}

CZRB_String CZRB_String::FromNumber(unsigned long long value, unsigned int radix,
                                    unsigned int groupSize, char separator) {
    if (radix < 2) {
        return CZRB_String();
    }
    // At most 64 digits and 63 separators (radix 2, a separator after every digit).
    char digits[128];
    unsigned int count = 0;
    unsigned int sinceSeparator = 0;
    for (;;) {
        const unsigned long long digit = value % radix;
        value /= radix;
        digits[count++] = static_cast<char>(digit <= 9 ? '0' + digit : 'a' + (digit - 10));
        if (value == 0) {
            break;
        }
        if (++sinceSeparator == groupSize) {
            digits[count++] = separator;
            sinceSeparator = 0;
        }
    }
    CZRB_String result(count, ' ');
    for (unsigned int i = 0; i < count; ++i) {
        result.m_buffer[i] = digits[count - 1 - i];
    }
    return result;
}

CZRB_String CZRB_String::FromNumber(double value, char conversion, int precision) {
    CZRB_String result;
    if (conversion == 0 || std::strchr("fFgGeE", conversion) == nullptr) {
        return result;
    }
    // "%.*<c>": a negative precision counts as none, as printf defines it.
    const char format[] = {'%', '.', '*', conversion, 0};
    result.Format(format, precision, value);
    return result;
}

CZRB_String& CZRB_String::SetFromNumber(long long value) {
    return *this = FromNumber(value);
}

CZRB_String& CZRB_String::SetFromNumber(unsigned long long value, unsigned int radix,
                                        unsigned int groupSize, char separator) {
    return *this = FromNumber(value, radix, groupSize, separator);
}

CZRB_String& CZRB_String::SetFromNumber(double value, char conversion, int precision) {
    return *this = FromNumber(value, conversion, precision);
}

// --- Formatting ---

CZRB_String& CZRB_String::Format(const char* format, ...) {
    if (format == nullptr) {
        return *this;
    }
    va_list args;
    va_start(args, format);
    va_list measuring;
    va_copy(measuring, args);
    // The measuring pass writes into a work area, so a short text is done in one pass. Either
    // way the text is formatted outside this string's buffer, so arguments that point into
    // it stay valid.
    char work[256];
    const int measured = std::vsnprintf(work, sizeof work, format, measuring);
    va_end(measuring);
    if (measured < 0) {
        va_end(args);
        return *this;
    }
    const unsigned int length = static_cast<unsigned int>(measured);
    char* fresh = nullptr;
    const char* text = work;
    if (length >= sizeof work) {
        fresh = AllocateBytes(length);
        std::vsnprintf(fresh, length + size_t{1}, format, args);
        text = fresh;
    }
    va_end(args);
    if (length == m_length && length != 0) {
        std::memcpy(m_buffer, text, length); // the NewBuffer rule keeps the buffer
        delete[] fresh;
    } else if (fresh != nullptr) {
        AdoptFunction(fresh, length, length);
    } else {
        AssignFunction(work, length);
    }
    return *this;
}

CZRB_String& CZRB_String::SetFormatted(unsigned int width, t_Align align, char fill) {
    CZRB_String result(width, fill);
    const unsigned int count = m_length < width ? m_length : width;
    if (align == ALIGN_LEFT) {
        std::memcpy(result.m_buffer, m_buffer, count);
    } else if (align == ALIGN_RIGHT) {
        std::memcpy(result.m_buffer + (width - count), m_buffer + (m_length - count), count);
    } else if (align == ALIGN_CENTER) {
        // The difference is a signed 32-bit value and the division truncates.
        const unsigned int difference = width - m_length;
        unsigned int start = IsPositiveAsSigned(difference) ? difference / 2 : 0;
        if (start > width - count) {
            start = 0;
        }
        std::memcpy(result.m_buffer + start, m_buffer, count);
    }
    DataCopy(result);
    return *this;
}

// --- Text to numbers ---

long long CZRB_String::ToSigned() const {
    return std::strtoll(m_buffer, nullptr, 10);
}

unsigned long long CZRB_String::ToUnsigned(unsigned int radix) const {
    if (radix == 1 || radix > 36) {
        return 0;
    }
    return std::strtoull(m_buffer, nullptr, static_cast<int>(radix));
}

double CZRB_String::ToDouble() const {
    return std::strtod(m_buffer, nullptr);
}

namespace {

// Digits, 'A'..'G', punctuation below 'G' and the bytes 0x80..0xFF end the marker scan.
bool IsStopChar(char c) {
    return static_cast<signed char>(c) <= 'G';
}

unsigned int RadixFromMarker(char marker) {
    switch (marker) {
    case 'H':
        return 16;
    case 'O':
        return 8;
    case 'B':
        return 2;
    default:
        return 10;
    }
}

} // namespace

unsigned long long CZRB_String::ToUnsignedAutoRadix(unsigned int notation) const {
    CZRB_String copy(*this);
    copy.Trim(' ', 3).SetCase(1);
    if (copy.m_length == 0 || (notation != 1 && notation != 2)) {
        return 0;
    }
    unsigned int radix = 10;
    CZRB_String text;
    if (notation == 1) {
        unsigned int skipped = 0;
        if (copy.GetChar(0) == '0' && copy.GetChar(1) == 'X') {
            radix = 16;
            skipped = 2;
        } else {
            char before = '?';
            unsigned int i = 0;
            while (i < copy.m_length && !IsStopChar(copy.m_buffer[i])) {
                before = copy.m_buffer[i++];
            }
            if (i == copy.m_length) {
                return 0;
            }
            radix = RadixFromMarker(before);
            skipped = i;
        }
        // Kept as shipped: the offset of the trimmed copy is applied to the untrimmed text.
        text = Right(m_length - skipped);
    } else {
        char after = '?';
        // Kept as shipped: the scan starts at the untrimmed length - 1 of the trimmed copy;
        // past the copy's end it reads zero bytes, which stop it.
        unsigned int i = m_length - 1;
        while (!IsStopChar(copy.GetChar(i))) {
            after = copy.GetChar(i);
            if (i == 0) {
                return 0;
            }
            --i;
        }
        radix = RadixFromMarker(after);
        text = Left(i + 1);
    }
    return std::strtoull(text.m_buffer, nullptr, static_cast<int>(radix));
}

// --- Splitting ---

unsigned int CZRB_String::ExtractEncapsulatedString(char open, char close, CZRB_String& out) const {
    unsigned int openIndex = 0;
    unsigned int closeIndex = 0;
    if (FindFromBegin(open, &openIndex, 0) == 0 ||
        FindFromBegin(close, &closeIndex, openIndex + 1) == 0) {
        return 11;
    }
    out = Mid(openIndex + 1, closeIndex - openIndex - 1);
    return 0;
}

// --- Stream record ---

LZRB_API CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_String& s) {
    buffer << s.GetLength();
    buffer.AppendData(const_cast<char*>(s.GetStringC()), s.GetLength());
    return buffer;
}

LZRB_API CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_String& s) {
    unsigned int length = 0;
    buffer >> length;
    // The announced length must be there before the string is resized for it.
    const unsigned __int64 position = buffer.GetAbsPosition();
    const unsigned __int64 size = buffer.GetSize();
    if (position > size || size - position < length) {
        throw CZRB_Exception(3, &buffer, 0);
    }
    if (length != s.GetLength()) {
        s.SetLength(length, ' ');
    }
    buffer.RetrieveData(const_cast<char*>(s.GetStringC()), length);
    return buffer;
}
