#include "CZRB_BitSet.h"

#include "CZRB_Exception.h"

#include <algorithm>
#include <string>

namespace {

const unsigned int kWordBits = 64;
const unsigned __int64 kAllOnes = ~0ULL;

// The low `count` bits set, for count 0 .. 64.
unsigned __int64 LowMask(unsigned int count) {
    return count >= kWordBits ? kAllOnes : ((1ULL << count) - 1);
}

// Mask of the bits of the last word that lie below the length.
unsigned __int64 LastWordMask(unsigned int numBits) {
    const unsigned int used = numBits % kWordBits;
    return used == 0 ? kAllOnes : LowMask(used);
}

unsigned int Parity(unsigned __int64 word) {
    word ^= word >> 32;
    word ^= word >> 16;
    word ^= word >> 8;
    word ^= word >> 4;
    word ^= word >> 2;
    word ^= word >> 1;
    return static_cast<unsigned int>(word & 1);
}

// Reverses digits gathered from the least significant end into text, putting separator
// after every `group` digits (0: none), never at either end.
CZRB_String GroupedText(const std::string& digits, unsigned int group, char separator) {
    std::string text;
    text.reserve(digits.size() + (group == 0 ? 0 : digits.size() / group));
    unsigned int inGroup = 0;
    for (size_t i = 0; i < digits.size(); ++i) {
        text.push_back(digits[i]);
        if (group != 0 && ++inGroup == group && i + 1 < digits.size()) {
            text.push_back(separator);
            inGroup = 0;
        }
    }
    std::reverse(text.begin(), text.end());
    return CZRB_String(text.data(), static_cast<unsigned int>(text.size()));
}

} // namespace

// --- CBit ---

CZRB_BitSet::CBit::CBit() : m_index(0), m_set(nullptr) {}

CZRB_BitSet::CBit::CBit(unsigned int index, CZRB_BitSet* set) : m_index(index), m_set(set) {}

CZRB_BitSet::CBit::CBit(const CBit& other) : m_index(other.m_index), m_set(other.m_set) {}

CZRB_BitSet::CBit::operator unsigned char() const {
    if (m_set == nullptr || m_index / kWordBits >= m_set->m_numWords) {
        return 0;
    }
    return m_set->UnsafeGetBit(m_index);
}

const CZRB_BitSet::CBit& CZRB_BitSet::CBit::operator=(const unsigned char& value) {
    if (m_set != nullptr && m_index / kWordBits < m_set->m_numWords) {
        m_set->UnsafeSetBit(m_index, value);
    }
    return *this;
}

CZRB_BitSet::CBit& CZRB_BitSet::CBit::operator=(const CBit& other) {
    const unsigned char value = other;
    *this = value;
    m_index = other.m_index;
    return *this;
}

// --- Construction and storage ---

CZRB_BitSet::CZRB_BitSet() : m_numBits(0), m_numWords(0), m_words(nullptr) {}

CZRB_BitSet::CZRB_BitSet(unsigned int numBits, unsigned char fillValue)
    : m_numBits(0), m_numWords(0), m_words(nullptr) {
    if (numBits == 0) {
        throw CZRB_Exception(5, this, 0);
    }
    CreateWords(GetNumWords(numBits));
    m_numBits = numBits;
    Fill(fillValue);
}

CZRB_BitSet::CZRB_BitSet(const CZRB_BitSet& other)
    : CZRB_Object(other), m_numBits(0), m_numWords(0), m_words(nullptr) {
    DataCopy(other);
}

CZRB_BitSet& CZRB_BitSet::operator=(const CZRB_BitSet& other) {
    DataCopy(other);
    return *this;
}

CZRB_BitSet& CZRB_BitSet::operator=(const unsigned __int64& value) {
    if (m_numWords != 1) {
        CreateWords(1);
        m_numBits = kWordBits;
    }
    m_words[0] = value;
    return *this;
}

CZRB_BitSet::~CZRB_BitSet() {
    Destroy();
}

unsigned int CZRB_BitSet::GetNumWords(unsigned int numBits) {
    return numBits == 0 ? 0 : (numBits - 1) / kWordBits + 1;
}

void CZRB_BitSet::DataCopy(const CZRB_BitSet& source) {
    if (&source == this) {
        return;
    }
    if (!source.IsValid()) {
        Destroy();
        return;
    }
    CreateWords(source.m_numWords);
    std::copy(source.m_words, source.m_words + source.m_numWords, m_words);
    m_numBits = source.m_numBits;
}

void CZRB_BitSet::CreateWords(unsigned int n) {
    if (n == m_numWords) {
        return;
    }
    delete[] m_words;
    m_words = new unsigned __int64[n];
    m_numWords = n;
}

void CZRB_BitSet::Reset() {
    std::fill(m_words, m_words + m_numWords, 0ULL);
}

void CZRB_BitSet::Destroy() {
    delete[] m_words;
    m_words = nullptr;
    m_numWords = 0;
    m_numBits = 0;
}

void CZRB_BitSet::Adopt(unsigned __int64* words, unsigned int numWords, unsigned int numBits) {
    delete[] m_words;
    m_words = words;
    m_numWords = numWords;
    m_numBits = numBits;
}

CZRB_BitSet& CZRB_BitSet::SetNumBits(unsigned int numBits) {
    if (numBits == m_numBits) {
        return *this;
    }
    const unsigned int newWords = GetNumWords(numBits);
    if (newWords != m_numWords) {
        unsigned __int64* words = new unsigned __int64[newWords];
        const unsigned int kept = std::min(m_numWords, newWords);
        std::copy(m_words, m_words + kept, words);
        std::fill(words + kept, words + newWords, 0ULL);
        Adopt(words, newWords, numBits);
    }
    m_numBits = numBits;
    return *this;
}

unsigned int CZRB_BitSet::GetNumBits() const {
    return m_numBits;
}

unsigned char CZRB_BitSet::IsValid() const {
    return m_words != nullptr && m_numBits > 0;
}

// --- Single bits ---

unsigned char CZRB_BitSet::UnsafeGetBit(unsigned int i) const {
    return static_cast<unsigned char>((m_words[i / kWordBits] >> (i % kWordBits)) & 1);
}

void CZRB_BitSet::UnsafeSetBit(unsigned int i, unsigned char value) {
    const unsigned __int64 mask = 1ULL << (i % kWordBits);
    if (value != 0) {
        m_words[i / kWordBits] |= mask;
    } else {
        m_words[i / kWordBits] &= ~mask;
    }
}

unsigned char CZRB_BitSet::GetBit(unsigned int i) const {
    if (m_words == nullptr || i >= m_numBits) {
        return 0;
    }
    return UnsafeGetBit(i);
}

CZRB_BitSet& CZRB_BitSet::SetBit(unsigned int i, unsigned char value) {
    if (m_words != nullptr && i < m_numBits) {
        UnsafeSetBit(i, value);
    }
    return *this;
}

CZRB_BitSet::CBit CZRB_BitSet::operator[](const unsigned int& i) {
    return CBit(i, this);
}

unsigned char CZRB_BitSet::operator[](const unsigned int& i) const {
    return i / kWordBits < m_numWords ? UnsafeGetBit(i) : 0;
}

// --- Word-wise bit moves ---

unsigned __int64 CZRB_BitSet::ReadBits(unsigned int position) const {
    const unsigned int word = position / kWordBits;
    const unsigned int offset = position % kWordBits;
    if (word >= m_numWords) {
        return 0;
    }
    unsigned __int64 bits = m_words[word] >> offset;
    if (offset != 0 && word + 1 < m_numWords) {
        bits |= m_words[word + 1] << (kWordBits - offset);
    }
    return bits;
}

void CZRB_BitSet::WriteBits(unsigned int position, unsigned int count, unsigned __int64 bits) {
    const unsigned int word = position / kWordBits;
    const unsigned int offset = position % kWordBits;
    const unsigned __int64 mask = LowMask(count);
    bits &= mask;
    m_words[word] = (m_words[word] & ~(mask << offset)) | (bits << offset);
    if (offset + count > kWordBits) {
        const unsigned int spill = offset + count - kWordBits;
        const unsigned __int64 spillMask = LowMask(spill);
        m_words[word + 1] =
            (m_words[word + 1] & ~spillMask) | ((bits >> (kWordBits - offset)) & spillMask);
    }
}

void CZRB_BitSet::CopyBits(unsigned int targetPosition, const CZRB_BitSet& source,
                           unsigned int sourcePosition, unsigned int count) {
    if (&source == this && count != 0) {
        const CZRB_BitSet copy(source);
        CopyBits(targetPosition, copy, sourcePosition, count);
        return;
    }
    while (count > 0) {
        const unsigned int chunk = std::min(count, kWordBits);
        WriteBits(targetPosition, chunk, source.ReadBits(sourcePosition));
        targetPosition += chunk;
        sourcePosition += chunk;
        count -= chunk;
    }
}

// --- Ranges and fields ---

CZRB_BitSet& CZRB_BitSet::Fill(unsigned char value) {
    std::fill(m_words, m_words + m_numWords, value != 0 ? kAllOnes : 0ULL);
    return *this;
}

CZRB_BitSet& CZRB_BitSet::Fill(unsigned int position, unsigned int count, unsigned char value) {
    if (position > m_numBits || count == 0) {
        return *this;
    }
    count = std::min(count, m_numBits - position);
    while (count > 0) {
        const unsigned int chunk = std::min(count, kWordBits);
        WriteBits(position, chunk, value != 0 ? kAllOnes : 0ULL);
        position += chunk;
        count -= chunk;
    }
    return *this;
}

CZRB_BitSet CZRB_BitSet::GetField(unsigned int position, unsigned int width) const {
    if (m_words == nullptr || m_numBits == 0 || position > m_numBits) {
        return CZRB_BitSet();
    }
    const unsigned int count = std::min(width, m_numBits - position);
    if (count == 0) {
        return CZRB_BitSet();
    }
    CZRB_BitSet field(count, 0);
    field.CopyBits(0, *this, position, count);
    return field;
}

unsigned __int64 CZRB_BitSet::GetFieldUnsigned(unsigned int position, unsigned int width) const {
    return GetField(position, width).ToUnsigned();
}

unsigned __int64 CZRB_BitSet::ToUnsigned() const {
    if (m_words == nullptr || m_numBits == 0) {
        return 0;
    }
    for (unsigned int i = 1; i < m_numWords; ++i) {
        if (m_words[i] != 0) {
            return kAllOnes;
        }
    }
    return m_words[0];
}

CZRB_BitSet& CZRB_BitSet::SetField(unsigned int position, unsigned int width,
                                   const CZRB_BitSet& source) {
    if (position > m_numBits) {
        return *this;
    }
    const unsigned int count = std::min(std::min(width, m_numBits - position), source.m_numBits);
    CopyBits(position, source, 0, count);
    return *this;
}

CZRB_BitSet& CZRB_BitSet::SetFieldUnsigned(unsigned int position, unsigned int width,
                                           const unsigned __int64& value) {
    if (position > m_numBits) {
        return *this;
    }
    const unsigned int count = std::min(std::min(width, m_numBits - position), kWordBits);
    if (count > 0) {
        WriteBits(position, count, value);
    }
    return *this;
}

// --- Whole-set logic and reductions ---

CZRB_BitSet CZRB_BitSet::operator~() const {
    CZRB_BitSet result;
    if (m_words == nullptr) {
        return result;
    }
    unsigned __int64* words = new unsigned __int64[m_numWords];
    for (unsigned int i = 0; i < m_numWords; ++i) {
        words[i] = ~m_words[i];
    }
    result.Adopt(words, m_numWords, m_numBits);
    return result;
}

CZRB_BitSet CZRB_BitSet::Combine(const CZRB_BitSet& other, int op) const {
    CZRB_BitSet result;
    const unsigned int numWords = std::min(m_numWords, other.m_numWords);
    const unsigned int numBits = std::min(m_numBits, other.m_numBits);
    if (numWords == 0) {
        return result;
    }
    unsigned __int64* words = new unsigned __int64[numWords];
    for (unsigned int i = 0; i < numWords; ++i) {
        const unsigned __int64 a = m_words[i];
        const unsigned __int64 b = other.m_words[i];
        words[i] = op == 0 ? (a & b) : op == 1 ? (a | b) : (a ^ b);
    }
    result.Adopt(words, numWords, numBits);
    return result;
}

CZRB_BitSet CZRB_BitSet::operator&(const CZRB_BitSet& other) const {
    return Combine(other, 0);
}

CZRB_BitSet CZRB_BitSet::operator|(const CZRB_BitSet& other) const {
    return Combine(other, 1);
}

CZRB_BitSet CZRB_BitSet::operator^(const CZRB_BitSet& other) const {
    return Combine(other, 2);
}

CZRB_BitSet& CZRB_BitSet::operator&=(const CZRB_BitSet& other) {
    DataCopy(*this & other);
    return *this;
}

CZRB_BitSet& CZRB_BitSet::operator|=(const CZRB_BitSet& other) {
    DataCopy(*this | other);
    return *this;
}

CZRB_BitSet& CZRB_BitSet::operator^=(const CZRB_BitSet& other) {
    DataCopy(*this ^ other);
    return *this;
}

unsigned char CZRB_BitSet::And() const {
    if (m_words == nullptr) {
        return 1;
    }
    for (unsigned int i = 0; i < GetNumWords(m_numBits); ++i) {
        const unsigned __int64 mask =
            i + 1 == GetNumWords(m_numBits) ? LastWordMask(m_numBits) : kAllOnes;
        if ((m_words[i] & mask) != mask) {
            return 0;
        }
    }
    return 1;
}

unsigned char CZRB_BitSet::Or() const {
    if (m_words == nullptr) {
        return 0;
    }
    for (unsigned int i = 0; i < GetNumWords(m_numBits); ++i) {
        const unsigned __int64 mask =
            i + 1 == GetNumWords(m_numBits) ? LastWordMask(m_numBits) : kAllOnes;
        if ((m_words[i] & mask) != 0) {
            return 1;
        }
    }
    return 0;
}

unsigned char CZRB_BitSet::Xor() const {
    if (m_words == nullptr) {
        return 0;
    }
    unsigned int parity = 0;
    for (unsigned int i = 0; i < GetNumWords(m_numBits); ++i) {
        const unsigned __int64 mask =
            i + 1 == GetNumWords(m_numBits) ? LastWordMask(m_numBits) : kAllOnes;
        parity ^= Parity(m_words[i] & mask);
    }
    return static_cast<unsigned char>(parity);
}

// --- Shifts ---

CZRB_BitSet CZRB_BitSet::operator<<(const unsigned int& n) const {
    CZRB_BitSet result(m_numBits, 0);
    if (n <= m_numBits) {
        result.CopyBits(n, *this, 0, m_numBits - n);
    }
    return result;
}

CZRB_BitSet CZRB_BitSet::operator>>(const unsigned int& n) const {
    CZRB_BitSet result(m_numBits, 0);
    if (n <= m_numBits) {
        result.CopyBits(0, *this, n, m_numBits - n);
    }
    return result;
}

CZRB_BitSet& CZRB_BitSet::operator<<=(const unsigned int& n) {
    DataCopy(*this << n);
    return *this;
}

CZRB_BitSet& CZRB_BitSet::operator>>=(const unsigned int& n) {
    DataCopy(*this >> n);
    return *this;
}

// --- Concatenation ---

unsigned int CZRB_BitSet::CheckedJoinLength(const CZRB_BitSet& other) const {
    if (!IsValid() || !other.IsValid() || m_numBits > ~0U - other.m_numBits) {
        throw CZRB_Exception(32, this, 0);
    }
    return m_numBits + other.m_numBits;
}

CZRB_BitSet CZRB_BitSet::Join(const CZRB_BitSet& low) const {
    CZRB_BitSet result(CheckedJoinLength(low), 0);
    result.CopyBits(0, low, 0, low.m_numBits);
    result.CopyBits(low.m_numBits, *this, 0, m_numBits);
    return result;
}

CZRB_BitSet& CZRB_BitSet::Merge(const CZRB_BitSet& other, unsigned char appendAbove) {
    const unsigned int total = CheckedJoinLength(other);
    if (&other == this) {
        const CZRB_BitSet copy(other);
        return Merge(copy, appendAbove);
    }
    const unsigned int oldBits = m_numBits;
    SetNumBits(total);
    if (appendAbove != 0) {
        CopyBits(oldBits, other, 0, other.m_numBits);
    } else {
        *this <<= other.m_numBits;
        CopyBits(0, other, 0, other.m_numBits);
    }
    return *this;
}

// --- Comparison ---

signed char CZRB_BitSet::CompareWords(const unsigned __int64* a, unsigned int numA,
                                      const unsigned __int64* b, unsigned int numB) {
    // Words only the longer array has decide first: any non-zero one makes it greater.
    for (unsigned int i = numA; i > numB; --i) {
        if (a[i - 1] != 0) {
            return 1;
        }
    }
    for (unsigned int i = numB; i > numA; --i) {
        if (b[i - 1] != 0) {
            return -1;
        }
    }
    for (unsigned int i = std::min(numA, numB); i > 0; --i) {
        if (a[i - 1] != b[i - 1]) {
            return a[i - 1] > b[i - 1] ? 1 : -1;
        }
    }
    return 0;
}

signed char CZRB_BitSet::Compare(const CZRB_BitSet& other) const {
    return CompareWords(m_words, m_numWords, other.m_words, other.m_numWords);
}

signed char CZRB_BitSet::Compare(const CZRB_BitSet& a, const CZRB_BitSet& b) {
    return a.Compare(b);
}

unsigned char CZRB_BitSet::operator==(const CZRB_BitSet& other) const {
    return Compare(other) == 0;
}

unsigned char CZRB_BitSet::operator!=(const CZRB_BitSet& other) const {
    return Compare(other) != 0;
}

unsigned char CZRB_BitSet::operator<(const CZRB_BitSet& other) const {
    return Compare(other) < 0;
}

unsigned char CZRB_BitSet::operator<=(const CZRB_BitSet& other) const {
    return Compare(other) <= 0;
}

unsigned char CZRB_BitSet::operator>(const CZRB_BitSet& other) const {
    return Compare(other) > 0;
}

unsigned char CZRB_BitSet::operator>=(const CZRB_BitSet& other) const {
    return Compare(other) >= 0;
}

unsigned char CZRB_BitSet::operator==(const unsigned __int64& value) const {
    return CompareWords(m_words, m_numWords, &value, 1) == 0;
}

unsigned char CZRB_BitSet::operator!=(const unsigned __int64& value) const {
    return CompareWords(m_words, m_numWords, &value, 1) != 0;
}

unsigned char CZRB_BitSet::operator<(const unsigned __int64& value) const {
    return CompareWords(m_words, m_numWords, &value, 1) < 0;
}

unsigned char CZRB_BitSet::operator<=(const unsigned __int64& value) const {
    return CompareWords(m_words, m_numWords, &value, 1) <= 0;
}

unsigned char CZRB_BitSet::operator>(const unsigned __int64& value) const {
    return CompareWords(m_words, m_numWords, &value, 1) > 0;
}

unsigned char CZRB_BitSet::operator>=(const unsigned __int64& value) const {
    return CompareWords(m_words, m_numWords, &value, 1) >= 0;
}

// --- Raw bytes ---

CZRB_BitSet& CZRB_BitSet::SetRawByteBuffer(const unsigned char* buffer, unsigned int length,
                                           ZRB::t_ByteOrdering order) {
    for (unsigned int i = 0; i < length && i / 8 < m_numWords; ++i) {
        const unsigned __int64 byte = order == 0 ? buffer[i] : buffer[length - 1 - i];
        const unsigned int shift = (i % 8) * 8;
        m_words[i / 8] = (m_words[i / 8] & ~(0xFFULL << shift)) | (byte << shift);
    }
    return *this;
}

void CZRB_BitSet::GetRawByteBuffer(unsigned char* buffer, unsigned int length,
                                   ZRB::t_ByteOrdering order) const {
    // Walks the words as if they were 32 bits wide (see the header).
    for (unsigned int i = 0; i < length && i / 4 < m_numWords; ++i) {
        const unsigned char byte =
            static_cast<unsigned char>((m_words[i / 4] >> ((i % 4) * 8)) & 0xFF);
        buffer[order == 0 ? i : length - 1 - i] = byte;
    }
}

// --- Text ---

CZRB_String CZRB_BitSet::ToString(unsigned int base, unsigned int group, char separator) const {
    if (m_words == nullptr || m_numBits == 0) {
        return CZRB_String();
    }
    std::string digits; // least significant first
    if (base == 2) {
        digits.reserve(m_numBits);
        for (unsigned int i = 0; i < m_numBits; ++i) {
            digits.push_back(UnsafeGetBit(i) != 0 ? '1' : '0');
        }
    } else if (base == 16) {
        const unsigned int count = m_numBits / 4 + (m_numBits % 4 != 0 ? 1 : 0);
        digits.reserve(count);
        for (unsigned int d = 0; d < count; ++d) {
            const unsigned int nibble =
                static_cast<unsigned int>((m_words[d / 16] >> ((d % 16) * 4)) & 0xF);
            digits.push_back("0123456789ABCDEF"[nibble]);
        }
    } else if (m_numBits > kWordBits) {
        return CZRB_String();
    } else {
        return CZRB_String::FromNumber(m_words[0], base, group, separator);
    }
    return GroupedText(digits, group, separator);
}

// --- Named containers ---

// The library's instantiations; the header's extern declarations carry LZRB_API.
template class CZRB_Vector<CZRB_BitSet>;
template class CZRB_List<CZRB_BitSet>;

CZRB_BitSetVector::~CZRB_BitSetVector() {}
CZRB_BitSetList::~CZRB_BitSetList() {}
