/// @file
/// CZRB_String: the library's byte string.
#ifndef CZRB_STRING_H
#define CZRB_STRING_H

#include "CZRB_Buffer.h"
#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

class CZRB_StringVector;
class CZRB_StringList;

/// The library's byte string.
///
/// A heap buffer with a zero byte always kept behind the last character. Operations that set
/// the text (construction, assignment, SetLength, Build, Format, the substring and trimming
/// forms) size the buffer exactly; appending and inserting grow it geometrically and then
/// use its spare room, so n appends cost O(n) in total. The spare room never exceeds the
/// text. A character is one byte, case mapping is ASCII only. Length-counted operations keep
/// embedded zero bytes; comparisons, CS_GetLength and construction from a zero-terminated string
/// stop at the first zero byte. Positions and counts out of range are clipped or make the operation
/// a no-op; no operation throws CZRB_Exception (only the allocator's own failure propagates).
class LZRB_API CZRB_String : public CZRB_Object {
public:
    /// Alignment of SetFormatted.
    enum t_Align : int { ALIGN_LEFT = 0, ALIGN_RIGHT = 1, ALIGN_CENTER = 2 };

    /// @name Construction and assignment
    /// @{

    /// Empty string (owns a one-byte buffer holding zero).
    CZRB_String();
    /// Copy of the other's length bytes (embedded zeros included) plus terminator.
    CZRB_String(const CZRB_String& other);
    /// Copies up to the first zero byte; a null pointer gives an empty string.
    CZRB_String(const char* text);
    /// Copies exactly count bytes (zero bytes included) and adds a terminator.
    CZRB_String(const char* data, unsigned int count);
    /// One-character string.
    CZRB_String(char c);
    /// count copies of c.
    CZRB_String(unsigned int count, char c);
    /// Frees the buffer.
    virtual ~CZRB_String();

    /// Copy of other; an equal non-zero length reuses the buffer.
    CZRB_String& operator=(const CZRB_String& other);
    /// Copy up to the first zero byte; an equal non-zero length reuses the buffer.
    CZRB_String& operator=(const char* text);
    /// One-character string.
    CZRB_String& operator=(char c);
    /// Replaces the contents by count copies of c.
    CZRB_String& Build(unsigned int count, char c);
    /// Equal length: nothing. Otherwise keeps the first min(length, old length) characters and
    /// fills the rest with fill.
    CZRB_String& SetLength(unsigned int length, char fill);
    /// Copies the length bytes and a terminator to dst; the caller provides the room.
    void ToStringC(char* dst) const;
    /// @}

    /// @name Zero-terminated helpers
    /// @{

    /// Bytes before the first zero; 0 for a null pointer.
    static unsigned int CS_GetLength(const char* text);
    /// Copies src up to and including its terminator into dst; returns dst.
    static char* CS_Copy(char* dst, const char* src);
    /// -1, 0 or 1 by the ordering rule of CompareMatchingCase.
    static signed char CS_Compare(const char* a, const char* b);
    /// @}

    /// @name Characters
    /// @{

    /// Number of characters, not counting the terminator.
    unsigned int GetLength() const;
    /// The buffer, always zero-terminated.
    const char* GetStringC() const;
    /// The byte at index, or zero when index is not below the length.
    char GetChar(unsigned int index) const;
    /// Stores c at index; does nothing when index is not below the length.
    CZRB_String& SetChar(unsigned int index, char c);
    /// @}

    /// @name Concatenation
    /// @{

    /// New string: this followed by other.
    CZRB_String operator+(const CZRB_String& other) const;
    /// New string: this followed by text up to its first zero byte.
    CZRB_String operator+(const char* text) const;
    /// New string: this followed by c.
    CZRB_String operator+(char c) const;
    /// Appends other; an empty other leaves the string and its buffer untouched.
    CZRB_String& operator+=(const CZRB_String& other);
    /// Appends text up to its first zero byte; an empty text changes nothing.
    CZRB_String& operator+=(const char* text);
    /// Appends c.
    CZRB_String& operator+=(char c) {
        if (m_length < m_capacity) {
            m_buffer[m_length] = c;
            m_buffer[++m_length] = 0;
            return *this;
        }
        AppendFunction(&c, 1);
        return *this;
    }
    /// @}

    /// @name Substrings (plain forms return a new string, Resize forms change this one)
    /// @{

    /// The first min(count, length) characters.
    CZRB_String Left(unsigned int count) const;
    /// The last min(count, length) characters.
    CZRB_String Right(unsigned int count) const;
    /// From index pos to the end; empty when pos is not below the length.
    CZRB_String RightFromPos(unsigned int pos) const;
    /// count characters from pos, clipped to the end; empty when pos is not below the length.
    CZRB_String Mid(unsigned int pos, unsigned int count) const;
    /// Keeps the first count characters; a count above the length changes nothing (never
    /// grows), 0 empties.
    CZRB_String& ResizeLeft(unsigned int count);
    /// Keeps the last count characters; a count above the length changes nothing, 0 empties.
    CZRB_String& ResizeRight(unsigned int count);
    /// Keeps the characters from pos on; empty when pos is not below the length.
    CZRB_String& ResizeRightFromPos(unsigned int pos);
    /// Keeps count characters from pos, clipped; empty when pos is out of range or count is 0.
    CZRB_String& ResizeMid(unsigned int pos, unsigned int count);
    /// @}

    /// @name Editing
    /// @{

    /// Places c before index pos (pos = length appends); nothing when pos is past the length.
    CZRB_String& Insert(char c, unsigned int pos);
    /// Places n = min(s.length, count) characters of s from index from before index pos.
    /// Kept as shipped: nothing is inserted when from is not below that clipped n (even if s
    /// is long enough) or when pos is past the length; n is then clipped to s.length - from.
    CZRB_String& Insert(const CZRB_String& s, unsigned int pos, unsigned int from,
                        unsigned int count);
    /// Removes count characters from pos, clipped to the end; nothing when count is 0 or pos
    /// is past the length.
    CZRB_String& RemoveChars(unsigned int pos, unsigned int count);
    /// Removes every occurrence of c.
    CZRB_String& RemoveChar(char c);
    /// Every a becomes b, in place.
    CZRB_String& ReplaceChar(char a, char b);
    /// With n = min(s.length, count): Left(pos) + s.Mid(from, n) + Right(length - pos - n), the
    /// last part only when that difference, taken as signed 32-bit, is positive. Kept as
    /// shipped: n characters are removed even when s.Mid yields fewer.
    CZRB_String& ReplaceChars(const CZRB_String& s, unsigned int pos, unsigned int from,
                              unsigned int count);
    /// Left(pos) + s.Mid(from, min(s.length, count)) + Right(length - pos - removeCount), the
    /// last part only when that difference, taken as signed 32-bit, is positive.
    CZRB_String& ReplaceString(const CZRB_String& s, unsigned int pos, unsigned int removeCount,
                               unsigned int from, unsigned int count);
    /// Removes runs of c: bit 0 of sides at the start, bit 1 at the end (3 = both).
    CZRB_String& Trim(char c, unsigned int sides = 3);
    /// 0 maps 'A'..'Z' to lower case, 1 maps 'a'..'z' to upper case, other modes do nothing.
    CZRB_String& SetCase(unsigned int mode);
    /// @}

    /// @name Searching (the index is stored through pos only on success; pos may be null)
    /// @{

    /// First c at or after start; false for an empty string or start not below the length.
    unsigned char FindFromBegin(char c, unsigned int* pos, unsigned int start = 0) const;
    /// First occurrence of s at or after start (case folded to lower when matchCase is 0);
    /// false when s or this is empty, start is not below the length, or s no longer fits.
    unsigned char FindFromBegin(const CZRB_String& s, unsigned int* pos, unsigned char matchCase,
                                unsigned int start = 0) const;
    /// Last c at or before start; false for an empty string. Kept as shipped: a start above
    /// the length becomes length - 1, but a start equal to the length is kept, so the scan
    /// begins at the terminator (searching for the zero byte from there finds index length).
    unsigned char FindFromEnd(char c, unsigned int* pos, unsigned int start = 0xFFFFFFFFU) const;
    /// Last occurrence of s starting at or before start, with the same start clamping; a
    /// candidate whose characters would reach the terminator fails. False when this is empty.
    /// Kept as shipped: an empty s is not rejected and matches at the clamped start.
    unsigned char FindFromEnd(const CZRB_String& s, unsigned int* pos, unsigned char matchCase,
                              unsigned int start = 0xFFFFFFFFU) const;
    /// @}

    /// @name Comparison (zero-terminated, over signed bytes: 0x80..0xFF sort before ASCII)
    /// @{

    /// -1, 0 or 1: the first differing byte decides; a string that ends first is less.
    signed char CompareMatchingCase(const CZRB_String& other) const;
    /// -1, 0 or 1 for a against b, by the rule above.
    static signed char CompareMatchingCase(const CZRB_String& a, const CZRB_String& b);
    /// As CompareMatchingCase over copies mapped to upper case. By design the searches fold
    /// to lower case instead, so '[', '_' and the like sort after letters here.
    signed char CompareNoMatchingCase(const CZRB_String& other) const;
    /// -1, 0 or 1 for a against b, folded to upper case.
    static signed char CompareNoMatchingCase(const CZRB_String& a, const CZRB_String& b);

    /// 1 when this is equal to other by CompareMatchingCase (case-sensitive), else 0.
    unsigned char operator==(const CZRB_String& other) const;
    /// 1 when this is not equal to other by CompareMatchingCase (case-sensitive), else 0.
    unsigned char operator!=(const CZRB_String& other) const;
    /// 1 when this is less than other by CompareMatchingCase (case-sensitive), else 0.
    unsigned char operator<(const CZRB_String& other) const;
    /// 1 when this is less or equal to other by CompareMatchingCase (case-sensitive), else 0.
    unsigned char operator<=(const CZRB_String& other) const;
    /// 1 when this is greater than other by CompareMatchingCase (case-sensitive), else 0.
    unsigned char operator>(const CZRB_String& other) const;
    /// 1 when this is greater or equal to other by CompareMatchingCase (case-sensitive), else 0.
    unsigned char operator>=(const CZRB_String& other) const;
    /// @}

    /// @name Numbers to text
    /// @{

    /// Decimal text of value ("%lld").
    static CZRB_String FromNumber(long long value);
    /// Digits in radix (lower-case letters above 9), grouped from the right by groupSize
    /// digits with separator (0: no grouping); no sign, prefix or padding; 0 gives "0". A
    /// radix below 2 gives an empty string. Never overruns its work area.
    static CZRB_String FromNumber(unsigned long long value, unsigned int radix,
                                  unsigned int groupSize, char separator);
    /// value formatted with "%.<precision><conversion>"; conversion must be one of f F g G e E,
    /// any other gives an empty string. A negative precision acts as if none was given.
    static CZRB_String FromNumber(double value, char conversion, int precision);
    /// This string becomes FromNumber(value).
    CZRB_String& SetFromNumber(long long value);
    /// This string becomes FromNumber(value, radix, groupSize, separator).
    CZRB_String& SetFromNumber(unsigned long long value, unsigned int radix, unsigned int groupSize,
                               char separator);
    /// This string becomes FromNumber(value, conversion, precision).
    CZRB_String& SetFromNumber(double value, char conversion, int precision);
    /// @}

    /// @name Formatting
    /// @{

    /// printf-style. The text is measured first, the buffer sized by the NewBuffer rule, then
    /// filled. A format error (or a null format) leaves the string unchanged.
    CZRB_String& Format(const char* format, ...);
    /// Exactly width characters of fill holding min(length, width) characters of the text:
    /// left from index 0; right ending at index width - 1 (the last characters); centred from
    /// max((width - length) / 2, 0), the first characters. A narrower width truncates on the
    /// right for left and centred alignment and on the left for right alignment. Any other
    /// align value leaves width fill characters.
    CZRB_String& SetFormatted(unsigned int width, t_Align align, char fill);
    /// @}

    /// @name Text to numbers
    /// @{

    /// Base-10 signed conversion (leading blanks and a sign accepted; 0 when nothing converts).
    long long ToSigned() const;
    /// Unsigned conversion in radix (0 detects "0x" and octal); 0 when nothing converts.
    unsigned long long ToUnsigned(unsigned int radix = 10) const;
    /// strtod of the text.
    double ToDouble() const;
    /// Unsigned number whose radix is marked by a letter: H 16, O 8, else 10; "0x" in front.
    /// notation 1: marker in front, 2: marker behind, other: 0. Kept as shipped: 'B' is itself
    /// a stop character, so binary text converts as decimal; offsets found on the blank-trimmed
    /// copy are applied to the untrimmed text, so pass text without blanks beside the marker.
    unsigned long long ToUnsignedAutoRadix(unsigned int notation) const;
    /// @}

    /// @name Splitting
    /// @{

    /// Fields between separators into out (replacing its contents): adjacent or leading
    /// separators give empty fields, a trailing separator gives no empty last field. An empty
    /// string gives an empty vector.
    void ExtractTags(char separator, CZRB_StringVector& out) const;
    /// As above, into a list (emptied first).
    void ExtractTags(char separator, CZRB_StringList& out) const;
    /// The text strictly between the first open and the next close after it: 0 and out set,
    /// or 11 with out unchanged when the string is empty or either mark is missing.
    unsigned int ExtractEncapsulatedString(char open, char close, CZRB_String& out) const;
    /// @}

protected:
    /// Equal non-zero length: keeps the buffer and its contents. Otherwise frees it and
    /// allocates length + 1 bytes with only the terminator set.
    void NewBuffer(unsigned int length);
    /// Frees the buffer and leaves none, length 0 (the destructor's step).
    void DeleteBuffer();
    /// A non-empty string becomes empty with a fresh one-byte buffer; an empty one is left.
    void ClearBuffer();
    /// Assignment rule: equal non-zero length copies over the old bytes, else reallocates.
    void DataCopy(const CZRB_String& other);
    /// Equal bytes; with matchCase 0 both are first mapped 'A'..'Z' to lower case.
    static unsigned char IsCharsEqual(const char& a, const char& b, unsigned char matchCase);

private:
    /// Replaces the contents by count bytes of data (which may lie inside this buffer).
    void AssignFunction(const char* data, unsigned int count);
    /// Replaces the contents by a + b (either may lie inside this buffer), sized exactly.
    void ConcatFunction(const char* a, unsigned int aCount, const char* b, unsigned int bCount);
    /// Appends count bytes of data (which may lie inside this buffer), growing geometrically.
    void AppendFunction(const char* data, unsigned int count);
    /// Places count bytes of data (which may lie inside this buffer) before index pos, in the
    /// spare room when it is enough, else in a geometrically grown buffer.
    void InsertFunction(unsigned int pos, const char* data, unsigned int count);
    /// Frees the old buffer and takes over fresh (room for capacity characters), length set
    /// and terminated.
    void AdoptFunction(char* fresh, unsigned int length, unsigned int capacity);

    /// Room inside the object for short texts, so that they need no heap block of their own.
    static constexpr unsigned int kInlineRoom = 15;
    /// Points the string at its inline room with `length` (at most kInlineRoom) characters and
    /// the terminator set, freeing a heap buffer it held; the characters are the caller's.
    void UseInlineFunction(unsigned int length);
    /// Frees the buffer when it is a heap block.
    void FreeHeapFunction();

    char* m_buffer;
    unsigned int m_length;
    /// Characters the buffer has room for, not counting the terminator's byte.
    unsigned int m_capacity;
    char m_inline[kInlineRoom + 1];
};

/// 1 when left is equal to right by CS_Compare (case-sensitive), else 0.
/// @relatesalso CZRB_String
LZRB_API unsigned char operator==(const char* left, const CZRB_String& right);
/// 1 when left is not equal to right by CS_Compare (case-sensitive), else 0.
/// @relatesalso CZRB_String
LZRB_API unsigned char operator!=(const char* left, const CZRB_String& right);
/// 1 when left is less than right by CS_Compare (case-sensitive), else 0.
/// @relatesalso CZRB_String
LZRB_API unsigned char operator<(const char* left, const CZRB_String& right);
/// 1 when left is less than or equal to right by CS_Compare (case-sensitive), else 0.
/// @relatesalso CZRB_String
LZRB_API unsigned char operator<=(const char* left, const CZRB_String& right);
/// 1 when left is greater than right by CS_Compare (case-sensitive), else 0.
/// @relatesalso CZRB_String
LZRB_API unsigned char operator>(const char* left, const CZRB_String& right);
/// 1 when left is greater than or equal to right by CS_Compare (case-sensitive), else 0.
/// @relatesalso CZRB_String
LZRB_API unsigned char operator>=(const char* left, const CZRB_String& right);

/// New string: c followed by s.
/// @relatesalso CZRB_String
LZRB_API CZRB_String operator+(char c, const CZRB_String& s);
/// New string: text (up to its first zero byte) followed by s.
/// @relatesalso CZRB_String
LZRB_API CZRB_String operator+(const char* text, const CZRB_String& s);

/// Writes the 32-bit length, then the length bytes without terminator.
/// @relatesalso CZRB_String
LZRB_API CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_String& s);
/// Reads a 32-bit length and that many bytes. A length announcing more bytes than remain
/// throws 3 (object: the stream) before the string is touched; a different length resizes
/// the string as SetLength(n, ' ') before the bytes are read.
/// @relatesalso CZRB_String
LZRB_API CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_String& s);

extern template class LZRB_API CZRB_Vector<CZRB_String>;
extern template class LZRB_API CZRB_List<CZRB_String>;

/// A vector of strings (default elements: empty strings).
class LZRB_API CZRB_StringVector : public CZRB_Vector<CZRB_String> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_StringVector, CZRB_Vector<CZRB_String>, CZRB_String)

public:
    /// Sorts by CompareMatchingCase (matchCase non-zero) or CompareNoMatchingCase (0);
    /// ascending non-zero puts the smallest first. An empty vector throws 2.
    CZRB_StringVector& Sort(unsigned char ascending, unsigned char matchCase);
};

/// A list of strings.
class LZRB_API CZRB_StringList : public CZRB_List<CZRB_String> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_StringList, CZRB_List<CZRB_String>, CZRB_String)

public:
    /// Stable sort by CompareMatchingCase (matchCase non-zero) or CompareNoMatchingCase (0);
    /// ascending non-zero puts the smallest first. The cursor stays on its node.
    CZRB_StringList& Sort(unsigned char ascending, unsigned char matchCase);
};

#endif
