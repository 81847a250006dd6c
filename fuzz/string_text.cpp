// Text from outside through the string's splitting, searching, comparing and editing: each
// answer equals that of a plain model of the documented rules (fields and a trailing
// separator, the start clamping of the searches, signed-byte ordering, clipped positions),
// and a string streamed out and back keeps every byte.
#include "CZRB_MemoryBuffer.h"
#include "CZRB_String.h"
#include "FuzzSupport.h"
#include "TextModel.h"

#include <algorithm>

namespace {

// A position or count near the text, or one near the top of the 32-bit range.
unsigned int TakePosition(FuzzInput& input, std::size_t length) {
    const unsigned int raw = input.Take<std::uint8_t>();
    return raw < 240 ? raw % static_cast<unsigned int>(length + 3) : 0xFFFFFFFFU - (raw - 240);
}

bool Same(const CZRB_String& text, const std::string& expected) {
    return FromLib(text) == expected;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

bool MatchesAt(const std::string& text, std::size_t at, const std::string& needle, bool matchCase) {
    for (std::size_t k = 0; k < needle.size(); ++k) {
        if (matchCase ? text[at + k] != needle[k] : Lower(text[at + k]) != Lower(needle[k])) {
            return false;
        }
    }
    return true;
}

// Ordering up to the first zero byte: a text that ends first is less, else the first
// differing byte decides, as a signed byte. -1, 0 or 1.
int Order(const std::string& a, const std::string& b) {
    const std::string left = a.c_str(), right = b.c_str();
    std::size_t i = 0;
    while (i < left.size() && i < right.size() && left[i] == right[i]) {
        ++i;
    }
    if (i == left.size() || i == right.size()) {
        return left.size() == right.size() ? 0 : i == left.size() ? -1 : 1;
    }
    return static_cast<signed char>(left[i]) < static_cast<signed char>(right[i]) ? -1 : 1;
}

void CheckSplitting(const CZRB_String& text, const std::string& bytes, char separator, char open,
                    char close) {
    const std::vector<std::string> fields = SplitFields(bytes, separator);
    CZRB_StringVector vector;
    CZRB_StringList list;
    text.ExtractTags(separator, vector);
    text.ExtractTags(separator, list);
    FUZZ_CHECK(vector.GetLength() == fields.size() && list.GetLength() == fields.size());
    for (unsigned int i = 0; i < fields.size(); ++i) {
        FUZZ_CHECK(Same(vector[i], fields[i]) && Same(list[i], fields[i]));
    }

    CZRB_String inside("(untouched)");
    const unsigned int result = text.ExtractEncapsulatedString(open, close, inside);
    const std::size_t first = bytes.find(open);
    const std::size_t last = first == std::string::npos ? first : bytes.find(close, first + 1);
    if (last == std::string::npos) {
        FUZZ_CHECK(result == 11 && Same(inside, "(untouched)"));
    } else {
        FUZZ_CHECK(result == 0 && Same(inside, bytes.substr(first + 1, last - first - 1)));
    }
}

void CheckSearching(const CZRB_String& text, const std::string& bytes, char c,
                    const std::string& needle, bool matchCase, unsigned int start) {
    const std::size_t length = bytes.size();
    unsigned int found = 0xFFFFFFFFU;
    std::size_t expected = std::string::npos;
    if (start < length) {
        expected = bytes.find(c, start);
    }
    FUZZ_CHECK(text.FindFromBegin(c, &found, start) == (expected != std::string::npos ? 1 : 0));
    FUZZ_CHECK(expected == std::string::npos || found == expected);

    // Kept as shipped: a start equal to the length begins at the terminating zero byte.
    const std::size_t from = start > length ? length - 1 : start;
    const std::string withTerminator = bytes + '\0';
    expected = std::string::npos;
    for (std::size_t i = from + 1; length != 0 && i-- > 0;) {
        if (withTerminator[i] == c) {
            expected = i;
            break;
        }
    }
    FUZZ_CHECK(text.FindFromEnd(c, &found, start) == (expected != std::string::npos ? 1 : 0));
    FUZZ_CHECK(expected == std::string::npos || found == expected);

    const CZRB_String s = ToLib(needle);
    expected = std::string::npos;
    for (std::size_t i = start; !needle.empty() && start < length && i + needle.size() <= length;
         ++i) {
        if (MatchesAt(bytes, i, needle, matchCase)) {
            expected = i;
            break;
        }
    }
    FUZZ_CHECK(text.FindFromBegin(s, &found, matchCase, start) ==
               (expected != std::string::npos ? 1 : 0));
    FUZZ_CHECK(expected == std::string::npos || found == expected);

    expected = std::string::npos;
    for (std::size_t i = from + 1; length != 0 && i-- > 0;) {
        if (i + needle.size() <= length && MatchesAt(bytes, i, needle, matchCase)) {
            expected = i;
            break;
        }
    }
    FUZZ_CHECK(text.FindFromEnd(s, &found, matchCase, start) ==
               (expected != std::string::npos ? 1 : 0));
    FUZZ_CHECK(expected == std::string::npos || found == expected);
}

void CheckComparing(const CZRB_String& a, const std::string& aBytes, const CZRB_String& b,
                    const std::string& bBytes) {
    const int order = Order(aBytes, bBytes);
    FUZZ_CHECK(a.CompareMatchingCase(b) == order &&
               CZRB_String::CompareMatchingCase(b, a) == -order);
    FUZZ_CHECK((a < b) == (order < 0) && (a == b) == (order == 0) && (a >= b) == (order >= 0));
    std::string aUpper = aBytes, bUpper = bBytes;
    std::transform(aUpper.begin(), aUpper.end(), aUpper.begin(), Upper);
    std::transform(bUpper.begin(), bUpper.end(), bUpper.begin(), Upper);
    const int folded = Order(aUpper, bUpper);
    FUZZ_CHECK(a.CompareNoMatchingCase(b) == folded &&
               CZRB_String::CompareNoMatchingCase(b, a) == -folded);
}

// The part of `bytes` kept by Right(count).
std::string RightPart(const std::string& bytes, std::size_t count) {
    return bytes.substr(bytes.size() - std::min(count, bytes.size()));
}

void CheckEditing(const CZRB_String& text, const std::string& bytes, FuzzInput& input,
                  const std::string& other) {
    const std::size_t length = bytes.size();
    const unsigned int pos = TakePosition(input, length), count = TakePosition(input, length);
    const unsigned int from = TakePosition(input, other.size());
    const unsigned int removeCount = TakePosition(input, length);
    const std::string mid = pos < length ? bytes.substr(pos, count) : std::string();
    FUZZ_CHECK(Same(text.Mid(pos, count), mid) &&
               Same(CZRB_String(text).ResizeMid(pos, count), mid));
    FUZZ_CHECK(Same(text.Left(count), bytes.substr(0, count)) &&
               Same(text.Right(count), RightPart(bytes, count)));

    std::string inserted = bytes;
    const std::size_t n = std::min<std::size_t>(other.size(), count);
    if (from < n && pos <= length) {
        inserted.insert(pos, other.substr(from, n));
    }
    FUZZ_CHECK(Same(CZRB_String(text).Insert(ToLib(other), pos, from, count), inserted));

    std::string removed = bytes;
    if (count != 0 && pos <= length) {
        removed.erase(pos, count);
    }
    FUZZ_CHECK(Same(CZRB_String(text).RemoveChars(pos, count), removed));

    // Left(pos) + other.Mid(from, n) + the right part, only when its length, taken as a signed
    // 32-bit value, is positive.
    const std::string otherMid = from < other.size() ? other.substr(from, n) : std::string();
    const auto rightOf = [&](unsigned int taken) {
        const int rest = static_cast<int>(static_cast<unsigned int>(length) - pos - taken);
        return rest > 0 ? RightPart(bytes, static_cast<unsigned int>(rest)) : std::string();
    };
    const std::string left = bytes.substr(0, pos);
    FUZZ_CHECK(Same(CZRB_String(text).ReplaceChars(ToLib(other), pos, from, count),
                    left + otherMid + rightOf(static_cast<unsigned int>(n))));
    FUZZ_CHECK(Same(CZRB_String(text).ReplaceString(ToLib(other), pos, removeCount, from, count),
                    left + otherMid + rightOf(removeCount)));
}

void CheckStreaming(const CZRB_String& text, const std::string& bytes, unsigned int blockSize) {
    CZRB_MemoryBuffer buffer(blockSize);
    buffer << text;
    buffer.ToStart();
    CZRB_String back("x");
    buffer >> back;
    FUZZ_CHECK(Same(back, bytes) && buffer.IsEnd() && buffer.GetSize() == 4 + bytes.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const char separator = input.Take<char>(), open = input.Take<char>();
    const char close = input.Take<char>();
    const bool matchCase = input.Take<std::uint8_t>() & 1U;
    const unsigned int blockSize = input.TakeInRange(1, 16);
    const std::string needle = input.TakeShortBytes(8);
    const std::string edits = input.TakeBytes(8);
    const std::string bytes = input.TakeRest();
    const CZRB_String text = ToLib(bytes);

    FuzzInput editInput(reinterpret_cast<const std::uint8_t*>(edits.data()), edits.size());
    const unsigned int start = TakePosition(editInput, bytes.size());
    CheckSplitting(text, bytes, separator, open, close);
    CheckSearching(text, bytes, separator, needle, matchCase, start);
    CheckComparing(text, bytes, ToLib(needle), needle);
    CheckEditing(text, bytes, editInput, needle);
    CheckStreaming(text, bytes, blockSize);
    return 0;
}
