// One long-lived string grown, edited and shrunk at random against std::string, so that the
// editing rules are checked while the buffer has spare room; and the searches against a
// plain scan.
#include "CZRB_String.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>

namespace {

CZRB_String Make(const std::string& text) {
    return CZRB_String(text.data(), static_cast<unsigned int>(text.size()));
}

// s.Mid(from, count) as the rules state it.
std::string Mid(const std::string& s, unsigned int from, unsigned int count) {
    return from >= s.size() || count == 0 ? std::string() : s.substr(from, count);
}

// Left(pos) + s.Mid(from, min(s.length, count)) + Right(rest) when rest, taken as signed, is
// positive: the rule ReplaceChars and ReplaceString share.
std::string Replaced(const std::string& text, const std::string& s, unsigned int pos,
                     unsigned int removeCount, unsigned int from, unsigned int count) {
    const auto length = static_cast<unsigned int>(text.size());
    std::string result = text.substr(0, std::min(pos, length)) +
                         Mid(s, from, std::min(static_cast<unsigned int>(s.size()), count));
    const unsigned int rest = length - pos - removeCount;
    if (static_cast<int>(rest) > 0) {
        result += text.substr(length - std::min(rest, length));
    }
    return result;
}

} // namespace

TEST(StringGrowth, EditsOnAGrowingBufferMatchStdString) {
    std::mt19937 random(5);
    CZRB_String s;
    std::string model;
    std::string piece;
    unsigned int pos = 0, from = 0, count = 0;
    const std::function<void()> actions[] = {
        [&] { s += piece[0], model += piece[0]; },
        [&] { s += piece.c_str(), model += piece.c_str(); },
        [&] { s += Make(piece), model += piece; },
        [&] { s += s, model += model; },
        [&] {
            const unsigned int inside = std::min(pos, s.GetLength()); // text from inside
            s += s.GetStringC() + inside;
            model += model.c_str() + inside;
        },
        [&] {
            s.Insert(piece[0], pos);
            if (pos <= model.size()) {
                model.insert(pos, 1, piece[0]);
            }
        },
        [&] {
            // The string into itself, near its start so that source and gap overlap (only a
            // start below count inserts anything).
            const std::string other = model;
            pos %= 12;
            from %= 8;
            s.Insert(s, pos, from, count);
            const unsigned int n = std::min(static_cast<unsigned int>(other.size()), count);
            if (from < n && pos <= model.size()) {
                model.insert(pos, other.substr(from, n));
            }
        },
        [&] {
            s.RemoveChars(pos, count);
            if (count != 0 && pos <= model.size()) {
                model.erase(pos, count);
            }
        },
        [&] {
            s.ReplaceChars(Make(piece), pos, from, count);
            const auto n = std::min(static_cast<unsigned int>(piece.size()), count);
            model = Replaced(model, piece, pos, n, from, count);
        },
        [&] {
            const std::string other = model;
            s.ReplaceString(s, pos, count, from, count);
            model = Replaced(model, other, pos, count, from, count);
        },
        [&] {
            const unsigned int length = s.GetLength() + count > 3 ? s.GetLength() + count - 3 : 0;
            s.SetLength(length, piece[0]);
            model.resize(length, piece[0]);
        },
        [&] { s.ResizeLeft(pos), model.resize(std::min<size_t>(model.size(), pos)); },
        [&] {
            const unsigned int width = std::max(count * 60, 1U); // longer texts from 5 on
            s.Format("%s|%0*d", s.GetStringC(), static_cast<int>(width), 7);
            model = std::string(model.c_str()) + "|" + std::string(width - 1, '0') + "7";
        },
    };
    const size_t actionCount = sizeof actions / sizeof actions[0];
    for (int step = 0; step < 5000; ++step) {
        piece.assign(1 + random() % 6, static_cast<char>('a' + random() % 3));
        if (random() % 8 == 0) {
            piece[0] = 0; // embedded zero bytes go through the counted forms
        }
        pos = static_cast<unsigned int>(random() % (model.size() + 2));
        from = static_cast<unsigned int>(random() % (model.size() + 2));
        count = static_cast<unsigned int>(random() % 8);
        size_t choice = random() % actionCount;
        if (model.size() > 3000 && (choice == 3 || choice == 6)) {
            choice = 11; // keep the run small
        }
        actions[choice]();
        ASSERT_EQ(Str(s), model) << "step " << step << " action " << choice;
        ASSERT_EQ(s.GetStringC()[s.GetLength()], 0) << "step " << step;
    }
}

TEST(StringGrowth, SearchesMatchAPlainScan) {
    std::mt19937 random(9);
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    for (int round = 0; round < 3000; ++round) {
        std::string text, pattern;
        for (unsigned int i = random() % 40; i > 0; --i) {
            text += "abAB\0"[random() % 5];
        }
        for (unsigned int i = random() % 4; i > 0; --i) {
            pattern += "abAB\0"[random() % 5];
        }
        const auto start = static_cast<unsigned int>(random() % (text.size() + 2));
        const auto matchCase = static_cast<unsigned char>(random() % 2);
        const auto equal = [&](char a, char b) {
            return matchCase ? a == b : lower(a) == lower(b);
        };

        unsigned int expected = ~0U;
        for (size_t i = start; pattern.size() != 0 && i + pattern.size() <= text.size(); ++i) {
            if (std::equal(pattern.begin(), pattern.end(), text.begin() + i, equal)) {
                expected = static_cast<unsigned int>(i);
                break;
            }
        }
        unsigned int found = ~0U;
        const unsigned char result =
            Make(text).FindFromBegin(Make(pattern), &found, matchCase, start);
        ASSERT_EQ(result, expected != ~0U ? 1 : 0) << text << " / " << pattern;
        ASSERT_EQ(found, expected) << text << " / " << pattern << " from " << start;

        const char c = "abAB\0"[random() % 5];
        const size_t at = start < text.size() ? text.find(c, start) : std::string::npos;
        found = ~0U;
        ASSERT_EQ(Make(text).FindFromBegin(c, &found, start), at != std::string::npos ? 1 : 0);
        ASSERT_EQ(found, at != std::string::npos ? at : ~0U);
    }
}
