/// @file
/// CZRB_BitSet: a bit string of any length held in 64-bit words, with bit and field access,
/// whole-set logic, shifts, concatenation, unsigned comparison, raw byte conversion and text.
#ifndef CZRB_BITSET_H
#define CZRB_BITSET_H

#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"
#include "ZRB.h"

/// A bit string of any length held in 64-bit words, with bit and field access, whole-set
/// logic, shifts, concatenation, unsigned comparison, raw byte conversion and text.
///
/// Bit i lives in word i / 64 at bit i mod 64; bit 0 is the least significant bit of the set.
/// The bits of the last word above the length are not kept at zero, by design: whole-word
/// operations (Fill(value), the filling constructor, operator~, assignment of a 64-bit value,
/// SetRawByteBuffer) write them, and whole-word readers (ToUnsigned, Compare and the relational
/// operators, hexadecimal ToString) see them. Bit-by-bit operations stay within the length.
class LZRB_API CZRB_BitSet : public CZRB_Object {
public:
    /// Reference to one bit of a set, returned by operator[]. Unchecked within the set's
    /// allocated words; an index beyond them reads 0 and writes nothing.
    class LZRB_API CBit {
    public:
        /// Index 0, no set.
        CBit();
        /// Refers to bit `index` of `set`.
        CBit(unsigned int index, CZRB_BitSet* set);
        /// Copies index and set.
        CBit(const CBit& other);

        /// The referenced bit, 0 or 1.
        operator unsigned char() const;
        /// Sets (non-zero) or clears the referenced bit.
        const CBit& operator=(const unsigned char& value);
        /// Writes the value of other's bit into this bit, then takes over other's index: the
        /// reference afterwards designates other's position in its own set (kept as shipped).
        CBit& operator=(const CBit& other);

    private:
        unsigned int m_index;
        CZRB_BitSet* m_set;
    };

    /// Empty set: 0 bits, 0 words, no storage.
    CZRB_BitSet();
    /// numBits bits; every allocated word all ones (fillValue non-zero) or zeros. Throws
    /// CZRB_Exception 5 (this) when numBits is 0.
    CZRB_BitSet(unsigned int numBits, unsigned char fillValue);
    /// Copy through DataCopy.
    CZRB_BitSet(const CZRB_BitSet& other);
    /// Copy through DataCopy; returns *this.
    CZRB_BitSet& operator=(const CZRB_BitSet& other);
    /// With exactly one word the value fills it and the length is kept (a 10-bit set holds all
    /// 64 bits of the value); otherwise the set becomes one word holding the value, 64 bits.
    CZRB_BitSet& operator=(const unsigned __int64& value);
    /// Frees the storage.
    virtual ~CZRB_BitSet();

    /// @name Storage
    /// @{

    /// Changes the length. When the word count changes the kept words are copied and new
    /// words are zeroed; bits coming back into range inside the last word keep their old
    /// contents (not cleared). 0 leaves an allocated but empty, not valid, set.
    CZRB_BitSet& SetNumBits(unsigned int numBits);
    /// The length in bits.
    unsigned int GetNumBits() const;
    /// 1 when the set has storage and a length above 0, else 0.
    unsigned char IsValid() const;
    /// @}

    /// @name Single bits
    /// @{

    /// Bit i (0 or 1); 0 without storage, for length 0 or for i at or above the length.
    unsigned char GetBit(unsigned int i) const;
    /// Sets (value non-zero) or clears bit i; silently ignored where GetBit reads 0.
    CZRB_BitSet& SetBit(unsigned int i, unsigned char value);
    /// Unchecked reference to bit i (see CBit).
    CBit operator[](const unsigned int& i);
    /// Unchecked read of bit i of a constant set; beyond the allocated words it reads 0.
    unsigned char operator[](const unsigned int& i) const;
    /// @}

    /// @name Ranges and fields
    /// @{

    /// Every allocated word all ones (value non-zero) or all zeros, bits above the length too.
    CZRB_BitSet& Fill(unsigned char value);
    /// Sets or clears bits position .. position + min(count, length - position) - 1; nothing
    /// when position is above the length or count is 0.
    CZRB_BitSet& Fill(unsigned int position, unsigned int count, unsigned char value);
    /// New set of min(width, length - position) bits read from bit position upward; an empty
    /// set without storage, for length 0, for position above the length or a width of 0.
    CZRB_BitSet GetField(unsigned int position, unsigned int width) const;
    /// GetField(position, width).ToUnsigned().
    unsigned __int64 GetFieldUnsigned(unsigned int position, unsigned int width) const;
    /// 0 without storage or for length 0; word 0 when it is the only word or every further word
    /// is zero; 2^64 - 1 (saturated) when a further word is non-zero.
    unsigned __int64 ToUnsigned() const;
    /// Writes the low min(width, length - position, source length) bits of source from bit
    /// position upward; nothing when position is above the length.
    CZRB_BitSet& SetField(unsigned int position, unsigned int width, const CZRB_BitSet& source);
    /// As SetField with a 64-bit source holding value: at most 64 bits are written.
    CZRB_BitSet& SetFieldUnsigned(unsigned int position, unsigned int width,
                                  const unsigned __int64& value);
    /// @}

    /// @name Whole-set logic and reductions
    /// @{

    /// Same length and word count, every word inverted (bits above the length too).
    CZRB_BitSet operator~() const;
    /// Word-wise AND; length and word count are the smaller of the two.
    CZRB_BitSet operator&(const CZRB_BitSet& other) const;
    /// Word-wise OR; length and word count are the smaller of the two.
    CZRB_BitSet operator|(const CZRB_BitSet& other) const;
    /// Word-wise XOR; length and word count are the smaller of the two.
    CZRB_BitSet operator^(const CZRB_BitSet& other) const;
    /// *this = *this & other (shrinks to the shorter length).
    CZRB_BitSet& operator&=(const CZRB_BitSet& other);
    /// *this = *this | other (shrinks to the shorter length).
    CZRB_BitSet& operator|=(const CZRB_BitSet& other);
    /// *this = *this ^ other (shrinks to the shorter length).
    CZRB_BitSet& operator^=(const CZRB_BitSet& other);
    /// 1 when every bit below the length is set (1 for length 0).
    unsigned char And() const;
    /// 1 when any bit below the length is set (0 for length 0).
    unsigned char Or() const;
    /// Parity of the set bits below the length (0 for length 0).
    unsigned char Xor() const;
    /// @}

    /// @name Shifts (left is towards higher bit numbers)
    /// @{

    /// New set of the same length shifted left by n, zeros shifted in; all zeros when n is at
    /// or above the length. Throws CZRB_Exception 5 for a set of length 0.
    CZRB_BitSet operator<<(const unsigned int& n) const;
    /// New set of the same length shifted right by n, zeros shifted in; all zeros when n is at
    /// or above the length. Throws CZRB_Exception 5 for a set of length 0.
    CZRB_BitSet operator>>(const unsigned int& n) const;
    /// *this = *this << n.
    CZRB_BitSet& operator<<=(const unsigned int& n);
    /// *this = *this >> n.
    CZRB_BitSet& operator>>=(const unsigned int& n);
    /// @}

    /// @name Concatenation
    /// @{

    /// New set of low.length + length bits: low in the lower bits, this set above it, so that
    /// a.Join(b) reads as a followed by b. Throws CZRB_Exception 32 (this) when either set is
    /// not valid or the joined length would not fit in 32 bits.
    CZRB_BitSet Join(const CZRB_BitSet& low) const;
    /// Grows this set by other's length and puts other above the old content (appendAbove
    /// non-zero) or below it (zero; the old content moves up). Throws CZRB_Exception 32 (this)
    /// when either set is not valid or the merged length would not fit in 32 bits.
    CZRB_BitSet& Merge(const CZRB_BitSet& other, unsigned char appendAbove);
    /// @}

    /// @name Comparison (as unsigned numbers over the allocated words; lengths play no part)
    /// @{

    /// -1, 0 or +1 comparing this set with other word by word from the top.
    signed char Compare(const CZRB_BitSet& other) const;
    /// -1, 0 or +1 comparing a with b word by word from the top.
    static signed char Compare(const CZRB_BitSet& a, const CZRB_BitSet& b);
    /// 1 when Compare(other) == 0, else 0.
    unsigned char operator==(const CZRB_BitSet& other) const;
    /// 1 when Compare(other) != 0, else 0.
    unsigned char operator!=(const CZRB_BitSet& other) const;
    /// 1 when Compare(other) < 0, else 0.
    unsigned char operator<(const CZRB_BitSet& other) const;
    /// 1 when Compare(other) <= 0, else 0.
    unsigned char operator<=(const CZRB_BitSet& other) const;
    /// 1 when Compare(other) > 0, else 0.
    unsigned char operator>(const CZRB_BitSet& other) const;
    /// 1 when Compare(other) >= 0, else 0.
    unsigned char operator>=(const CZRB_BitSet& other) const;
    /// 1 when this set equals a 64-bit set holding value, else 0.
    unsigned char operator==(const unsigned __int64& value) const;
    /// 1 when this set differs from a 64-bit set holding value, else 0.
    unsigned char operator!=(const unsigned __int64& value) const;
    /// 1 when this set is below a 64-bit set holding value, else 0.
    unsigned char operator<(const unsigned __int64& value) const;
    /// 1 when this set is not above a 64-bit set holding value, else 0.
    unsigned char operator<=(const unsigned __int64& value) const;
    /// 1 when this set is above a 64-bit set holding value, else 0.
    unsigned char operator>(const unsigned __int64& value) const;
    /// 1 when this set is not below a 64-bit set holding value, else 0.
    unsigned char operator>=(const unsigned __int64& value) const;
    /// @}

    /// @name Raw bytes
    /// @{

    /// Storage byte i (bits 8i .. 8i+7) receives buffer[i] (order 0) or buffer[length-1-i]
    /// (other orders) while i / 8 is below the word count. The length is not changed; storage
    /// bytes not reached keep their contents, buffer bytes beyond the storage are ignored.
    CZRB_BitSet& SetRawByteBuffer(const unsigned char* buffer, unsigned int length,
                                  ZRB::t_ByteOrdering order);
    /// buffer[i] (order 0) or buffer[length-1-i] (other orders) receives byte i mod 4 of word
    /// i / 4 while i / 4 is below the word count. Kept as shipped: only the low 32 bits of each
    /// word are read, so this is not the inverse of SetRawByteBuffer beyond 32 bits, and output
    /// bytes not reached are left untouched.
    void GetRawByteBuffer(unsigned char* buffer, unsigned int length,
                          ZRB::t_ByteOrdering order) const;
    /// @}

    /// @name Text
    /// @{

    /// Base 2: one '0'/'1' per bit below the length, most significant first. Base 16: one
    /// upper-case digit per four bits (the top digit takes its bits from the word, above the
    /// length too). Any other base: CZRB_String::FromNumber(word 0, base, group, separator).
    /// In base 2 and 16 separator goes between digits after every group digits counted from
    /// the least significant end; a group of 0 means no grouping. Empty without storage, for
    /// length 0, and for other bases when the length exceeds 64.
    CZRB_String ToString(unsigned int base, unsigned int group, char separator) const;
    /// @}

protected:
    /// Word count for numBits bits: 0 for 0, else (numBits - 1) / 64 + 1.
    static unsigned int GetNumWords(unsigned int numBits);
    /// Takes over a valid source's counts and words (reallocating only when the word counts
    /// differ); an invalid source leaves this set empty.
    void DataCopy(const CZRB_BitSet& source);
    /// When n differs from the word count, replaces the array by n uninitialised words; the
    /// length is not touched.
    void CreateWords(unsigned int n);
    /// Zeroes every word.
    void Reset();
    /// Frees the array; both counts become 0.
    void Destroy();
    /// Bit i without any check.
    unsigned char UnsafeGetBit(unsigned int i) const;
    /// Sets or clears bit i without any check.
    void UnsafeSetBit(unsigned int i, unsigned char value);

private:
    /// Frees the array and takes over `words` (numWords of them) and numBits.
    void Adopt(unsigned __int64* words, unsigned int numWords, unsigned int numBits);
    /// The 64 bits starting at bit `position` of the allocated words; bits beyond them read 0.
    unsigned __int64 ReadBits(unsigned int position) const;
    /// Writes the low `count` (1..64) bits of `bits` at bit `position`, within the words.
    void WriteBits(unsigned int position, unsigned int count, unsigned __int64 bits);
    /// Copies `count` bits of source from sourcePosition to this set's targetPosition.
    void CopyBits(unsigned int targetPosition, const CZRB_BitSet& source,
                  unsigned int sourcePosition, unsigned int count);
    /// Word-wise binary operation over the common words (op: 0 and, 1 or, 2 xor).
    CZRB_BitSet Combine(const CZRB_BitSet& other, int op) const;
    /// Compares two word arrays as unsigned numbers.
    static signed char CompareWords(const unsigned __int64* a, unsigned int numA,
                                    const unsigned __int64* b, unsigned int numB);
    /// Throws CZRB_Exception 32 (this) unless both sets are valid and the lengths add up to
    /// at most 2^32 - 1 bits; returns the sum.
    unsigned int CheckedJoinLength(const CZRB_BitSet& other) const;

    unsigned int m_numBits;
    unsigned int m_numWords;
    unsigned __int64* m_words;
};

extern template class LZRB_API CZRB_Vector<CZRB_BitSet>;
extern template class LZRB_API CZRB_List<CZRB_BitSet>;

/// Named vector of bit sets (default elements: empty sets), sorted by CZRB_BitSet::Compare.
class LZRB_API CZRB_BitSetVector : public CZRB_Vector<CZRB_BitSet> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_BitSetVector, CZRB_Vector<CZRB_BitSet>, CZRB_BitSet)
    LZRB_NAMED_SORT(CZRB_BitSetVector, CZRB_Vector<CZRB_BitSet>, &CZRB_BitSet::Compare)
};

/// Named list of bit sets, sorted by CZRB_BitSet::Compare.
class LZRB_API CZRB_BitSetList : public CZRB_List<CZRB_BitSet> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_BitSetList, CZRB_List<CZRB_BitSet>, CZRB_BitSet)
    LZRB_NAMED_SORT(CZRB_BitSetList, CZRB_List<CZRB_BitSet>, &CZRB_BitSet::Compare)
};

#endif
