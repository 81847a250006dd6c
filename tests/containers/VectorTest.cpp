#include "CZRB_List.h"
#include "CZRB_Vector.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using IntVector = CZRB_Vector<int>;

std::vector<int> Items(const IntVector& v) {
    return std::vector<int>(v.GetBuf(), v.GetBuf() + v.GetLength());
}

IntVector Make(std::vector<int> items) {
    return IntVector(items.data(), static_cast<unsigned int>(items.size()));
}

} // namespace

TEST(Vector, CreationRecreationAndAccess) {
    IntVector empty;
    EXPECT_TRUE(empty.GetLength() == 0 && !empty == 0 && empty.GetBuf() == nullptr);
    EXPECT_EQ(CodeOf([&] { empty.Create(0); }, &empty), 9U);
    EXPECT_EQ(CodeOf([&] { empty.Recreate(0, 0); }, &empty), 9U);
    EXPECT_THROW(IntVector(0U), CZRB_Exception);

    IntVector filled(3U, 7);
    EXPECT_EQ(Items(filled), (std::vector<int>{7, 7, 7}));
    EXPECT_EQ(!filled, 3U);
    EXPECT_EQ(CodeOf([&] { (void)filled[3]; }, &filled), 5U);
    int raw[] = {4, 5, 6};
    filled.Create(raw, 2);
    EXPECT_EQ(Items(filled), (std::vector<int>{4, 5}));
    filled.Create(filled.GetBuf(), 2); // own elements as source
    EXPECT_EQ(Items(filled), (std::vector<int>{4, 5}));

    IntVector v = Make({1, 2, 3, 4, 5});
    v.Recreate(3, 2);
    EXPECT_EQ(Items(v), (std::vector<int>{3, 4, 5}));
    v.Recreate(4, 1, v[0]); // the fill value lives in the old block
    EXPECT_EQ(Items(v), (std::vector<int>{4, 5, 3, 3}));
    IntVector grown;
    grown.Recreate(2, 5, 8); // empty: Create(2, 8)
    EXPECT_EQ(Items(grown), (std::vector<int>{8, 8}));
    EXPECT_EQ(grown.DeleteAll().GetLength(), 0U);
}

TEST(Vector, CopyingBetweenVectorsArraysAndLists) {
    IntVector a = Make({1, 2, 3});
    IntVector b(a);
    EXPECT_EQ(Items(b), Items(a));
    IntVector& alias = b;
    b = alias;
    EXPECT_EQ(Items(b), (std::vector<int>{1, 2, 3}));
    b = IntVector(); // empty: appending it to an empty vector throws 9 below

    int out[6] = {0, 0, 0, 0, 0, 0};
    a.CopyItemsTo(2, out, 1, 10); // stops at the end of the vector
    EXPECT_EQ(std::vector<int>(out, out + 6), (std::vector<int>{0, 0, 2, 3, 0, 0}));

    IntVector dst = Make({0, 0, 0});
    EXPECT_EQ(CodeOf([&] { dst.CopyItemsFrom(2, a, 0, 2, 0); }, &dst), 2U);
    dst.CopyItemsFrom(2, a, 0, 2, 1);
    EXPECT_EQ(Items(dst), (std::vector<int>{0, 0, 1, 2}));
    EXPECT_EQ(CodeOf([&] { dst.CopyItemsFrom(0, a, 1, 3, 0); }, &a), 5U);
    EXPECT_EQ(Items(dst), (std::vector<int>{2, 3, 1, 2})); // copied part stays
    int raw[] = {9, 8};
    dst.CopyItemsFrom(3, raw, 0, 2, 1);
    EXPECT_EQ(Items(dst), (std::vector<int>{2, 3, 1, 9, 8}));

    CZRB_List<int> list;
    EXPECT_EQ(CodeOf([&] { dst.CopyItemsFrom(0, list, 1, 0); }, &list), 5U);
    int listItems[] = {10, 20, 30};
    list.AppendItems(listItems, 3, 0);
    list.ToPos(1);
    dst.CopyItemsFrom(0, list, 4, 0); // ends after the list's last item
    EXPECT_EQ(Items(dst), (std::vector<int>{20, 30, 1, 9, 8}));
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
    fromList = emptyList; // empty, so the appends below throw 9
    EXPECT_EQ(CodeOf([&] { fromList.AppendList(emptyList); }, &fromList), 9U);
    EXPECT_EQ(CodeOf([&] { fromList.AppendVector(b); }, &fromList), 9U);
}

TEST(Vector, ExtractAndAppend) {
    IntVector v = Make({1, 2, 3, 4});
    IntVector part;
    v.Extract(part, 2, 3);
    EXPECT_TRUE(part.GetLength() == 3 && part[0] == 3 && part[1] == 4); // part[2] unset
    EXPECT_EQ(CodeOf([&] { v.Extract(part, 0, 0); }, &part), 9U);
    EXPECT_EQ(Items(v.ExtractInvertVector(1, 3)), (std::vector<int>{4, 3, 2}));
    IntVector reversed = v.ExtractInvertVector(2, 4);
    EXPECT_TRUE(reversed[2] == 4 && reversed[3] == 3); // the first two unset
    EXPECT_EQ(v.ExtractInvertVector(0, 0).GetLength(), 0U);

    IntVector grow;
    grow += 5;
    grow.AppendItem(grow[0]); // item refers to the vector's own block
    grow.AppendVector(grow);
    EXPECT_EQ(Items(grow), (std::vector<int>{5, 5, 5, 5}));
}

TEST(Vector, ShiftsInsertionsAndDeletions) {
    IntVector v = Make({1, 2, 3, 4, 5});
    v.DownShift(1, 2);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 2, 3, 2, 3}));
    v.UpShift(1, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 3, 2, 3, 3}));
    EXPECT_EQ(CodeOf([&] { v.DownShift(5, 1); }, &v), 2U);
    EXPECT_EQ(CodeOf([&] { v.UpShift(5, 1); }, &v), 2U);
    IntVector empty;
    empty.DownShift(7, 3); // size - 1 wraps: never throws on an empty vector

    v = Make({1, 7, 7, 2, 3}); // growing insertions: at random in GrowthTest
    v.InsertItems(0, 9, 2, 0); // no growth: the tail is lost
    EXPECT_EQ(Items(v), (std::vector<int>{9, 9, 1, 7, 7}));
    v.InsertItems(4, 6, 3, 0); // writes stop at the end
    EXPECT_EQ(Items(v), (std::vector<int>{9, 9, 1, 7, 6}));
    IntVector src = Make({10, 20, 30});
    v.InsertItems(1, src, 2, 1, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{9, 20, 30, 9, 1, 7, 6}));
    EXPECT_EQ(CodeOf([&] { v.InsertItems(0, src, 2, 2, 1); }, &src), 5U);
    int raw[] = {4, 5};
    v = Make({1, 2});
    v.InsertItems(2 - 1, raw, 2, 0, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 5, 2}));
    CZRB_List<int> list(2U, 8);
    IntVector copy = v.InsertItems(0, list, 2, 1);
    EXPECT_EQ(Items(copy), (std::vector<int>{8, 8, 1, 4, 5, 2}));
    EXPECT_EQ(Items(v), Items(copy));

    v = Make({1, 2, 3, 4, 5}); // shrinking deletions: at random in GrowthTest
    v.DeleteItems(1, 2, 0);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 4, 5, 4, 5}));
    v.DeleteItems(0, 9, 1);
    EXPECT_EQ(CodeOf([&] { v.DeleteItems(0, 1, 1); }, &v), 2U);
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
    EXPECT_EQ(CodeOf([&] { v.Fill(2, 2, 2, 0); }, &v), 2U);
    v.Fill(v[0], 2, 2, 1);
    EXPECT_EQ(Items(v), (std::vector<int>{1, 1, 1, 1}));
    v.Fill(3, 0, 0, 0);

    v = Make({1, 4, 2, 3}); // in-range swaps, inversions: at random in GrowthTest
    EXPECT_EQ(CodeOf([&] { v.SwapItems(4, 0); }, &v), 2U);
    EXPECT_EQ(CodeOf([&] { v.SwapItems(0, 5); }, &v), 2U);
    v.InvertItemsOrder().InvertItemsOrder();
    EXPECT_EQ(CodeOf([&] { v.InvertItemsOrder(2, 3); }, &v), 2U);
    v.InvertItemsOrder(9, 4); // starts beyond the size: stops at once

    IntVector empty;
    EXPECT_EQ(CodeOf([&] { empty.Sort(CompareInts, 1); }, &empty), 2U);
    IntVector one = Make({4});
    one.Sort(CompareInts, 1);

    EXPECT_EQ(IntVector() == IntVector(), 1);
    EXPECT_EQ(Make({1}) == Make({1, 1}), 0);
    EXPECT_EQ(Make({1, 2}) != Make({1, 3}), 1);
}
