// Vectors grown, shrunk, reordered and sorted step by step, against std::vector, for arithmetic,
// string and counted class elements: the contents, the room kept behind the elements (always
// below the elements' own size), and that the spare room never holds a live element.
#include "CZRB_List.h"
#include "CZRB_String.h"
#include "CZRB_Vector.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

// Counts its live instances; an assignment can be made to fail. External linkage for the
// explicit instantiations below, which compile every member for a caller's class.
struct Counted {
    static int alive;
    static int assignmentsBeforeFailure; // negative: never fails
    int value;
    Counted() : value(-1) { ++alive; }
    explicit Counted(int id) : value(id) { ++alive; }
    Counted(const Counted& other) : value(other.value) { ++alive; }
    Counted& operator=(const Counted& other) {
        if (assignmentsBeforeFailure >= 0 && assignmentsBeforeFailure-- == 0) {
            throw 42;
        }
        value = other.value;
        return *this;
    }
    ~Counted() { --alive; }
    unsigned char operator==(const Counted& other) const { return value == other.value ? 1 : 0; }
};
int Counted::alive = 0;
int Counted::assignmentsBeforeFailure = -1;

template class CZRB_Vector<Counted>;
template class CZRB_List<Counted>;

namespace {

// Exposes the room the block has.
template <class T>
struct CRoomProbe : CZRB_Vector<T> {
    unsigned int Room() const { return this->m_nCapacity; }
};

template <class T>
T Make(int id) {
    if constexpr (std::is_same_v<T, CZRB_String>) {
        return CZRB_String::FromNumber(static_cast<long long>(id));
    } else {
        return T(id);
    }
}

template <class T>
int Id(const T& item) {
    if constexpr (std::is_same_v<T, int>) {
        return item;
    } else if constexpr (std::is_same_v<T, CZRB_String>) {
        return static_cast<int>(item.ToSigned()); // a new, empty string reads as 0
    } else {
        return item.value;
    }
}

// The id a new element has: zero for numbers, the default value of a class.
template <class T>
int NewId() {
    return Id(T());
}

template <class T>
std::vector<int> Ids(const CZRB_Vector<T>& v) {
    std::vector<int> ids;
    for (unsigned int i = 0; i < v.GetLength(); ++i) {
        ids.push_back(Id(v.GetBuf()[i]));
    }
    return ids;
}

template <class T>
signed char CompareIds(const T& a, const T& b) {
    return CompareInts(Id(a), Id(b));
}

template <class T>
CZRB_Vector<T> MakeVector(const std::vector<int>& ids) {
    CZRB_Vector<T> v;
    for (int id : ids) {
        v.AppendItem(Make<T>(id));
    }
    return v;
}

template <class T>
class VectorGrowth : public ::testing::Test {};
using ElementTypes = ::testing::Types<int, CZRB_String, Counted>;
struct ElementNames {
    template <class T>
    static std::string GetName(int) {
        return std::is_same_v<T, int> ? "Int" : std::is_same_v<T, Counted> ? "Counted" : "String";
    }
};
TYPED_TEST_SUITE(VectorGrowth, ElementTypes, ElementNames);

TYPED_TEST(VectorGrowth, InterleavedOperationsMatchStdVector) {
    using T = TypeParam;
    std::mt19937 random(11);
    const int aliveBefore = Counted::alive;
    {
        CRoomProbe<T> v;
        std::vector<int> model;
        int id = 0;
        unsigned int at = 0, n = 0;
        const std::vector<int> three = {7, 8, 9};
        const std::function<void()> actions[] = {
            [&] { v.AppendItem(Make<T>(id)), model.push_back(id); },
            [&] { v += v[at], model.push_back(model[at]); }, // an element of its own
            [&] { v.AppendVector(v), model.insert(model.end(), model.begin(), model.end()); },
            [&] {
                CZRB_Vector<T> other = MakeVector<T>(three);
                v &= other;
                model.insert(model.end(), three.begin(), three.end());
            },
            [&] {
                CZRB_List<T> list;
                list.AppendItem(Make<T>(id));
                v.AppendList(list);
                model.push_back(id);
            },
            [&] { v.InsertItems(at, Make<T>(id), n, 1), model.insert(model.begin() + at, n, id); },
            [&] {
                CZRB_Vector<T> other = MakeVector<T>(three);
                v.InsertItems(at, other, n % 4, 0, 1);
                model.insert(model.begin() + at, three.begin(), three.begin() + n % 4);
            },
            [&] {
                v.DeleteItems(at, n, 1);
                model.erase(model.begin() + at,
                            model.begin() + std::min<size_t>(model.size(), at + n));
            },
            [&] {
                v.DeleteItems(at, n, 0);
                const size_t end = std::min<size_t>(model.size(), at + n);
                std::copy(model.begin() + end, model.end(), model.begin() + at);
            },
            [&] {
                CZRB_Vector<T> other = MakeVector<T>(three);
                const unsigned int end = v.GetLength();
                v.CopyItemsFrom(end, other, 0, 3, 1);
                model.insert(model.end(), three.begin(), three.end());
            },
            [&] {
                v.Fill(Make<T>(id), at + n, 2, 1);
                model.resize(std::max<size_t>(model.size(), at + n + 2), NewId<T>());
                model[at + n] = model[at + n + 1] = id;
            },
            [&] {
                v.Recreate(v.GetLength() + n, 0);
                model.resize(model.size() + n, NewId<T>());
            },
            [&] {
                const unsigned int kept = v.GetLength() / 2 + 1;
                const int first = model[0];
                v.Recreate(kept, at / 2, v[0]); // the fill value lives in the old block
                model.erase(model.begin(), model.begin() + at / 2);
                model.resize(kept, first);
            },
            [&] {
                v.SwapItems(at, n % v.GetLength()), std::swap(model[at], model[n % model.size()]);
            },
            [&] {
                n = std::min(n, v.GetLength() - at);
                v.InvertItemsOrder(at, n);
                std::reverse(model.begin() + at, model.begin() + at + n);
            },
            [&] {
                v.Sort(CompareIds<T>, static_cast<unsigned char>(n % 2));
                std::sort(model.begin(), model.end(),
                          [&](int a, int b) { return n % 2 ? a < b : a > b; });
            },
            [&] {
                CZRB_Vector<T> copy(v);
                v.DeleteAll();
                static_cast<CZRB_Vector<T>&>(v) = copy;
            },
        };
        const size_t count = sizeof actions / sizeof actions[0];
        for (int step = 0; step < 3000; ++step) {
            id = static_cast<int>(random() % 1000) + 1;
            at = model.empty() ? 0 : static_cast<unsigned int>(random() % model.size());
            n = static_cast<unsigned int>(random() % 6);
            size_t choice = random() % count;
            if (model.empty()) {
                choice = 0; // the other actions need an element or throw for an empty vector
            } else if ((model.size() > 400 && (choice == 2 || choice == 11)) ||
                       (choice == 15 && model.size() > 100)) {
                choice = 7; // keep the run small and the sorts short
            }
            actions[choice]();
            ASSERT_EQ(Ids(v), model) << "step " << step << " action " << choice;
            const unsigned int length = v.GetLength();
            ASSERT_TRUE(length == 0 ? v.Room() == 0 && v.GetBuf() == nullptr
                                    : length <= v.Room() && v.Room() < 2 * length)
                << "step " << step << ": room " << v.Room() << " for " << length;
            const int counted = std::is_same_v<T, Counted> ? static_cast<int>(length) : 0;
            ASSERT_EQ(Counted::alive - aliveBefore, counted) << "step " << step;
        }
    }
    EXPECT_EQ(Counted::alive, aliveBefore);
}

TYPED_TEST(VectorGrowth, AGrowingVectorKeepsLinearRoomAndTheEmptyRules) {
    using T = TypeParam;
    CRoomProbe<T> v;
    unsigned int reallocations = 0;
    const T* block = nullptr;
    for (int i = 0; i < 100000; ++i) {
        v.AppendItem(Make<T>(i));
        reallocations += v.GetBuf() != block ? 1 : 0;
        block = v.GetBuf();
    }
    EXPECT_LE(reallocations, 20U);
    EXPECT_EQ(Id(v[99999]), 99999);
    EXPECT_LT(v.Room(), 2 * v.GetLength());
    v.DeleteItems(0, 100000, 1); // shrinking to nothing frees the block
    EXPECT_TRUE(v.GetLength() == 0 && v.Room() == 0 && v.GetBuf() == nullptr);

    CZRB_Vector<T> empty;
    EXPECT_EQ(CodeOf([&] { v.AppendVector(empty); }, &v), 9U);
    EXPECT_EQ(CodeOf([&] { v.InsertItems(0, Make<T>(1), 0, 1); }, &v), 9U);
}

} // namespace

TEST(VectorGrowth, AFailingElementCopyLeavesTheVectorAsItWas) {
    for (int failAt = 0; failAt < 12; ++failAt) {
        CZRB_Vector<Counted> v;
        for (int i = 0; i < 6; ++i) {
            v.AppendItem(Make<Counted>(i)); // room 8 after the sixth
        }
        const std::vector<int> before = Ids(v);
        Counted::assignmentsBeforeFailure = failAt;
        try {
            for (int i = 0; i < 4; ++i) {
                v.AppendItem(v[0]); // two in the room, a reallocation, one in the new room
            }
        } catch (int) {
        }
        Counted::assignmentsBeforeFailure = -1;
        const std::vector<int> after = Ids(v);
        ASSERT_TRUE(std::equal(before.begin(), before.end(), after.begin())) << failAt;
        ASSERT_TRUE(std::all_of(after.begin() + 6, after.end(), [](int id) { return id == 0; }));
        ASSERT_EQ(Counted::alive, static_cast<int>(v.GetLength())) << failAt;
    }
    EXPECT_EQ(Counted::alive, 0);
}
