#include "CZRB_List.h"
#include "CZRB_Vector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using IntVector = CZRB_Vector<int>;

std::vector<int> Items(const IntVector& v) {
    return std::vector<int>(v.GetBuf(), v.GetBuf() + v.GetLength());
}

IntVector Make(std::vector<int> items) {
    IntVector v;
    for (int item : items) {
        v.AppendItem(item);
    }
    return v;
}

template <class F>
void ExpectThrow(F action, unsigned int code, const void* object) {
    try {
        action();
        ADD_FAILURE() << "no exception, expected code " << code;
    } catch (const CZRB_Exception& e) {
        EXPECT_EQ(e.code, code);
        EXPECT_EQ(e.object, object);
    }
}

signed char CompareInts(const int& a, const int& b) {
    return static_cast<signed char>(a > b ? 1 : (a < b ? -1 : 0));
}

} // namespace

TEST(Vector, CreationRecreationAndAccess) {
    IntVector empty;
    EXPECT_EQ(empty.GetLength(), 0U);
    EXPECT_EQ(!empty, 0U);
    EXPECT_EQ(empty.GetBuf(), nullptr);
    ExpectThrow([&] { empty.Create(0); }, 9, &empty);
    ExpectThrow([&] { empty.Recreate(0, 0); }, 9, &empty);
    EXPECT_THROW(IntVector(0U), CZRB_Exception);

    IntVector filled(3U, 7);
    EXPECT_EQ(Items(filled), (std::vector<int>{7, 7, 7}));
    EXPECT_EQ(!filled, 3U);
    ExpectThrow([&] { (void)filled[3]; }, 5, &filled);
    int raw[] = {4, 5, 6};
    filled.Create(raw, 2);
    EXPECT_EQ(Items(filled), (std::vector<int>{4, 5}));
    filled.Create(filled.GetBuf(), 2); // own elements as source
    EXPECT_EQ(Items(filled), (std::vector<int>{4, 5}));

    IntVector v = Make({1, 2, 3, 4, 5});
    v.Recreate(3, 2);
    EXPECT_EQ(Items(v), (std::vector<int>{3, 4, 5}));
    v = Make({1, 2, 3, 4, 5});
    v.Recreate(4, 3, 9);
    EXPECT_EQ(Items(v), (std::vector<int>{4, 5, 9, 9}));
    v.Recreate(2, 0, v[0]);
    EXPECT_EQ(Items(v), (std::vector<int>{4, 5}));
    IntVector grown;
    grown.Recreate(2, 5, 8); // empty: Create(2, 8)
    EXPECT_EQ(Items(grown), (std::vector<int>{8, 8}));
    EXPECT_EQ(&grown.DeleteAll(), &grown);
    EXPECT_EQ(grown.GetLength(), 0U);
}

TEST(Vector, CopyingBetweenVectorsArraysAndLists) {
    IntVector a = Make({1, 2, 3});
    IntVector b(a);
    EXPECT_EQ(Items(b), Items(a));
    IntVector& alias = b;
    b = alias;
    EXPECT_EQ(Items(b), (std::vector<int>{1, 2, 3}));
    b = IntVector();
    EXPECT_EQ(b.GetLength(), 0U);

    int out[6] = {0, 0, 0, 0, 0, 0};
    a.CopyItemsTo(2, out, 1, 10); // stops at the end of the vector
    EXPECT_EQ(std::vector<int>(out, out + 6), (std::vector<int>{0, 0, 2, 3, 0, 0}));

    IntVector dst = Make({0, 0, 0});
    ExpectThrow([&] { dst.CopyItemsFrom(2, a, 0, 2, 0); }, 2, &dst);
    dst.CopyItemsFrom(2, a, 0, 2, 1);
    EXPECT_EQ(Items(dst), (std::vector<int>{0, 0, 1, 2}));
    ExpectThrow([&] { dst.CopyItemsFrom(0, a, 1, 3, 0); }, 5, &a);
    EXPECT_EQ(Items(dst), (std::vector<int>{2, 3, 1, 2})); // copied part stays
    int raw[] = {9, 8};
    dst.CopyItemsFrom(3, raw, 0, 2, 1);
    EXPECT_EQ(Items(dst), (std::vector<int>{2, 3, 1, 9, 8}));

    CZRB_List<int> list;
    ExpectThrow([&] { dst.CopyItemsFrom(0, list, 1, 0); }, 5, &list);
    int listItems[] = {10, 20, 30};
    list.AppendItems(listItems, 3, 0);
    list.ToPos(1);
    dst.CopyItemsFrom(0, list, 4, 0); // ends after the list's last item
    EXPECT_EQ(Items(dst), (std::vector<int>{20, 30, 1, 9, 8}));
    EXPECT_EQ(list.CurItem(), 30);
    list.ToStart();
    dst.CopyItemsFrom(1, list, 2, 0);
    EXPECT_EQ(Items(dst), (std::vector<int>{20, 10, 20, 9, 8}));
    EXPECT_EQ(list.CurItem(), 30); // moved on after each copied item

    list.ToStart();
    IntVector fromList;
    fromList = list;
    EXPECT_EQ(Items(fromList), (std::vector<int>{10, 20, 30}));
    EXPECT_EQ(list.IsEnd(), 1);
    fromList.AppendList(list);
    fromList &= a;
    EXPECT_EQ(Items(fromList), (std::vector<int>{10, 20, 30, 10, 20, 30, 1, 2, 3}));
    CZRB_List<int> emptyList;
    fromList = emptyList;
    EXPECT_EQ(fromList.GetLength(), 0U);
    ExpectThrow([&] { fromList.AppendList(emptyList); }, 9, &fromList);
    ExpectThrow([&] { fromList.AppendVector(b); }, 9, &fromList);
}

TEST(Vector, ExtractAndAppend) {
    IntVector v = Make({1, 2, 3, 4});
    IntVector part;
    v.Extract(part, 2, 3);
    EXPECT_EQ(part.GetLength(), 3U);
    EXPECT_EQ(part[0], 3);
    EXPECT_EQ(part[1], 4);
    ExpectThrow([&] { v.Extract(part, 0, 0); }, 9, &part);
    EXPECT_EQ(Items(v.ExtractInvertVector(1, 3)), (std::vector<int>{4, 3, 2}));
    IntVector reversed = v.ExtractInvertVector(2, 4);
    EXPECT_EQ(reversed[2], 4);
    EXPECT_EQ(reversed[3], 3);
    EXPECT_EQ(v.ExtractInvertVector(0, 0).GetLength(), 0U);

    IntVector grow;
    grow += 5;
    EXPECT_EQ(Items(grow), (std::vector<int>{5}));
    grow.AppendItem(grow[0]); // item refers to the vector's own block
    grow.AppendVector(grow);
    EXPECT_EQ(Items(grow), (std::vector<int>{5, 5, 5, 5}));
}

TEST(Vector, ShiftsInsertionsAndDeletions) {
    IntVector v = Make({1, 2, 3, 4, 5});
    v.DownShift(1, 2);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 2, 3, 2, 3}));
    v.UpShift(1, 2);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 2, 3, 2, 3}));
    ExpectThrow([&] { v.DownShift(5, 1); }, 2, &v);
    ExpectThrow([&] { v.UpShift(5, 1); }, 2, &v);
    IntVector empty;
    empty.DownShift(7, 3); // size - 1 wraps: never throws on an empty vector

    v = Make({1, 2, 3});
    v.InsertItems(1, 7, 2, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 7, 7, 2, 3}));
    v.InsertItems(0, 9, 2, 0); // no growth: the tail is lost
    EXPECT_EQ(Items(v), (std::vector<int>{9, 9, 1, 7, 7}));
    v.InsertItems(4, 6, 3, 0); // writes stop at the end
    EXPECT_EQ(Items(v), (std::vector<int>{9, 9, 1, 7, 6}));
    IntVector src = Make({10, 20, 30});
    v.InsertItems(1, src, 2, 1, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{9, 20, 30, 9, 1, 7, 6}));
    ExpectThrow([&] { v.InsertItems(0, src, 2, 2, 1); }, 5, &src);
    int raw[] = {4, 5};
    v = Make({1, 2});
    v.InsertItems(2 - 1, raw, 2, 0, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 5, 2}));
    CZRB_List<int> list(2U, 8);
    IntVector copy = v.InsertItems(0, list, 2, 1);
    EXPECT_EQ(Items(copy), (std::vector<int>{8, 8, 1, 4, 5, 2}));
    EXPECT_EQ(Items(v), Items(copy));

    v = Make({1, 2, 3, 4, 5});
    v.DeleteItems(1, 2, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 5}));
    v = Make({1, 2, 3, 4, 5});
    v.DeleteItems(1, 2, 0);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 5, 4, 5}));
    v.DeleteItems(3, 10, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 5}));
    v.DeleteItems(0, 3, 1);
    EXPECT_EQ(v.GetLength(), 0U);
    ExpectThrow([&] { v.DeleteItems(0, 1, 1); }, 2, &v);
}

TEST(Vector, FillFindSwapInvertSortCompare) {
    IntVector v = Make({5, 6, 5});
    unsigned int index = 99;
    EXPECT_EQ(v.FindToEnd(5, &index, 3), 0);
    EXPECT_EQ(v.FindToEnd(5, &index, 1), 1);
    EXPECT_EQ(index, 2U);
    EXPECT_EQ(v.FindToStart(5, &index, 1), 1);
    EXPECT_EQ(index, 0U);
    EXPECT_EQ(v.FindToStart(5, &index, 2), 1);
    EXPECT_EQ(index, 2U);
    EXPECT_EQ(v.FindToStart(6, &index, 0x80000000U), 0);
    EXPECT_EQ(v.FindToStart(6, &index, 50), 1); // beyond the size: nothing there to match
    EXPECT_EQ(index, 1U);
    index = 42;
    EXPECT_EQ(v.FindToEnd(7, &index, 0), 0);
    EXPECT_EQ(index, 42U);

    v.Fill(1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 1, 1}));
    ExpectThrow([&] { v.Fill(2, 2, 2, 0); }, 2, &v);
    v.Fill(v[0], 2, 2, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 1, 1, 1}));
    v.Fill(3, 0, 0, 0);

    v = Make({1, 2, 3, 4});
    v.SwapItems(0, 3);
    EXPECT_EQ(Items(v), (std::vector<int>{4, 2, 3, 1}));
    ExpectThrow([&] { v.SwapItems(4, 0); }, 2, &v);
    ExpectThrow([&] { v.SwapItems(0, 5); }, 2, &v);
    v.InvertItemsOrder();
    EXPECT_EQ(Items(v), (std::vector<int>{1, 3, 2, 4}));
    v.InvertItemsOrder(1, 3);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 2, 3}));
    ExpectThrow([&] { v.InvertItemsOrder(2, 3); }, 2, &v);
    v.InvertItemsOrder(9, 4); // starts beyond the size: stops at once

    v = Make({3, 1, 2, 1});
    v.Sort(CompareInts, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 1, 2, 3}));
    v.Sort(CompareInts, 0);
    EXPECT_EQ(Items(v), (std::vector<int>{3, 2, 1, 1}));
    IntVector empty;
    ExpectThrow([&] { empty.Sort(CompareInts, 1); }, 2, &empty);
    IntVector one = Make({4});
    one.Sort(CompareInts, 1);

    EXPECT_EQ(IntVector() == IntVector(), 1);
    EXPECT_EQ(Make({1}) == Make({1, 1}), 0);
    EXPECT_EQ(Make({1, 2}) != Make({1, 2}), 0);
    EXPECT_EQ(Make({1, 2}) != Make({1, 3}), 1);
}

// The well-defined operations against std::vector.
TEST(Vector, RandomOperationsMatchStdVector) {
    std::mt19937 random(7);
    auto pick = [&](unsigned int bound) { return static_cast<unsigned int>(random() % bound); };
    IntVector v;
    std::vector<int> model;
    for (int step = 0; step < 4000; ++step) {
        const int value = static_cast<int>(pick(50));
        const unsigned int size = static_cast<unsigned int>(model.size());
        switch (pick(8)) {
        case 0:
            v.AppendItem(value);
            model.push_back(value);
            break;
        case 1:
            if (size > 0) {
                const unsigned int at = pick(size), n = pick(4);
                v.InsertItems(at, value, n, 1);
                model.insert(model.begin() + at, n, value);
            }
            break;
        case 2:
            if (size > 0) {
                const unsigned int at = pick(size), n = pick(4);
                v.DeleteItems(at, n, 1);
                model.erase(model.begin() + at, model.begin() + std::min(size, at + n));
            }
            break;
        case 3:
            if (size > 0) {
                const unsigned int i = pick(size), j = pick(size);
                v.SwapItems(i, j);
                std::swap(model[i], model[j]);
            }
            break;
        case 4:
            if (size > 0) {
                const unsigned int at = pick(size), n = pick(size - at + 1);
                v.InvertItemsOrder(at, n);
                std::reverse(model.begin() + at, model.begin() + at + n);
            }
            break;
        case 5:
            if (size > 0 && pick(10) == 0) {
                const unsigned char ascending = static_cast<unsigned char>(pick(2));
                v.Sort(CompareInts, ascending);
                if (ascending != 0) {
                    std::sort(model.begin(), model.end());
                } else {
                    std::sort(model.rbegin(), model.rend());
                }
            }
            break;
        case 6: {
            const unsigned int at = pick(size + 1), n = pick(3);
            v.Fill(value, at, n, 1);
            if (at + n > size) {
                model.resize(at + n);
            }
            std::fill(model.begin() + at, model.begin() + at + n, value);
            break;
        }
        default:
            if (size > 1) {
                const unsigned int from = pick(size / 2), n = pick(size) + 1;
                v.Recreate(n, from, value);
                std::vector<int> next(n, value);
                for (unsigned int k = 0; k < n && from + k < size; ++k) {
                    next[k] = model[from + k];
                }
                model = next;
            }
        }
        ASSERT_EQ(Items(v), model) << "step " << step;
    }
}
