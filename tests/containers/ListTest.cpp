#include "CZRB_List.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <list>
#include <random>
#include <vector>

namespace {

using IntList = CZRB_List<int>;

// The items reached from the head with ToPos (moves the cursor).
std::vector<int> Items(IntList& list) {
    std::vector<int> items;
    for (unsigned int i = 0; i < list.GetLength(); ++i) {
        items.push_back(list[i]);
    }
    return items;
}

IntList Make(std::vector<int> items) {
    IntList list;
    list.AppendItems(items.data(), static_cast<unsigned int>(items.size()), 0);
    return list;
}

template <class F>
unsigned int CodeOf(F action) {
    try {
        action();
    } catch (const CZRB_Exception& e) {
        return e.code;
    }
    return 0;
}

signed char CompareInts(const int& a, const int& b) {
    return static_cast<signed char>(a > b ? 1 : (a < b ? -1 : 0));
}

} // namespace

TEST(List, CursorMovesAndPositions) {
    IntList list = Make({1, 2, 3, 4});
    EXPECT_EQ(list.ToStart(), 1);
    EXPECT_EQ(list.Next(3), 1);
    EXPECT_EQ(list.CurItem(), 4);
    EXPECT_EQ(list.Next(5), 4);
    EXPECT_EQ(list.IsEnd(), 1);
    EXPECT_EQ(list << 2, 4);
    EXPECT_EQ(list.CurItem(), 2);
    EXPECT_EQ(list.ItemsFromStart(), 1U);
    EXPECT_EQ(list.ItemsToEnd(), 2U);
    EXPECT_EQ(list.Prev(9), 2);
    EXPECT_EQ(list.IsStart(), 1);
    EXPECT_EQ(list >> 0, 1);
    EXPECT_EQ(list[2], 3);
    EXPECT_EQ(list.CurItem(), 3);
    EXPECT_EQ(CodeOf([&] { list[4]; }), 5U);
    EXPECT_EQ(list.ToEnd(), 4);

    IntList empty;
    EXPECT_EQ(empty.IsStart() + empty.IsEnd(), 2);
    EXPECT_EQ(empty.CurItemRef(), nullptr);
    EXPECT_EQ(empty.ItemsFromStart() + empty.ItemsToEnd(), 0U);
    EXPECT_EQ(CodeOf([&] { empty.CurItem(); }), 5U);
    EXPECT_EQ(CodeOf([&] { empty.Next(1); }), 5U);
    EXPECT_EQ(CodeOf([&] { empty.Prev(1); }), 5U);
    EXPECT_EQ(CodeOf([&] { empty.ToStart(); }), 5U);
    EXPECT_EQ(CodeOf([&] { empty.ToEnd(); }), 5U);
    EXPECT_EQ(CodeOf([&] { IntList(nullptr, 0); }), 9U);
    EXPECT_EQ(IntList(0U, 5).GetLength(), 0U);
    IntList three(3U, 5);
    EXPECT_EQ(three.IsStart(), 1);
    EXPECT_EQ(!three, 3U);
}

TEST(List, AddingItems) {
    IntList list;
    *list.InsertItem() = 5; // empty list: the only node
    list.AppendItem(7);
    list.ToStart();
    list.InsertItem(4); // before the head: new head and cursor
    EXPECT_EQ(list.IsStart(), 1);
    list.Next(2);
    list.InsertItem(6);
    EXPECT_EQ(list.CurItem(), 6);
    EXPECT_EQ(Items(list), (std::vector<int>{4, 5, 6, 7}));
    EXPECT_EQ(*list.AppendItem(), 0);

    int raw[] = {1, 2, 3};
    IntList other;
    other.AppendItems(raw, 0, 0);
    EXPECT_EQ(other.CurItemRef(), nullptr);
    other.AppendItems(raw, 2, 1);
    other &= list;
    EXPECT_EQ(other.IsEnd(), 1);
    EXPECT_EQ(Items(other), (std::vector<int>{2, 3, 4, 5, 6, 7, 0}));
    other.AppendList(other);
    EXPECT_EQ(other.GetLength(), 14U);

    CZRB_Vector<int> vec(raw, 3);
    IntList fromVec;
    fromVec &= vec;
    EXPECT_EQ(fromVec.CurItem(), 3);
    fromVec.ToStart();
    IntList copy = fromVec.AppendItems(fromVec, 2); // from its own cursor
    EXPECT_EQ(Items(copy), (std::vector<int>{1, 2, 3, 1, 2}));
    fromVec = vec;
    EXPECT_EQ(Items(fromVec), (std::vector<int>{1, 2, 3}));
    CZRB_Vector<int> none;
    fromVec = none;
    EXPECT_EQ(fromVec.GetLength(), 0U);
    EXPECT_EQ(fromVec.CurItemRef(), nullptr);

    IntList source = Make({8, 9});
    IntList target;
    target.InsertList(source);
    EXPECT_EQ(target.CurItem(), 9);
    EXPECT_EQ(target.IsEnd(), 1);
    target.ToStart();
    target.DeleteItem();
    target.DeleteAll();
    target.AppendItem(1);
    target.AppendItem(2);
    target.DeleteItems(1); // tail deleted: cursor on the new tail
    target.AppendItem(3);
    target.ToStart();
    target.DeleteItem();
    target.DeleteItem();
    EXPECT_EQ(target.GetLength(), 0U);
}

TEST(List, RemovingItems) {
    IntList list = Make({1, 2, 3});
    list.ToEnd();
    list.DeleteItem();
    EXPECT_EQ(Items(list), (std::vector<int>{1, 2}));
    list.ToEnd();
    EXPECT_EQ(list.CurItem(), 2);
    list = Make({1, 2, 3});
    list.ToStart();
    list.DeleteItem();
    EXPECT_EQ(list.CurItem(), 2);
    EXPECT_EQ(list.IsStart(), 1);
    list = Make({1, 2, 3});
    list.ToPos(1);
    list.DeleteItem();
    EXPECT_EQ(list.CurItem(), 3);

    list = Make({1, 2, 3, 4, 5});
    list.ToPos(1);
    list.DeleteItems(2);
    EXPECT_EQ(list.CurItem(), 4);
    list.DeleteItems(9);
    EXPECT_EQ(list.CurItem(), 1);
    EXPECT_EQ(list.GetLength(), 1U);
    list.DeleteItems(1);
    EXPECT_EQ(list.CurItemRef(), nullptr);
    list.DeleteItem(); // no cursor: nothing

    IntList stack;
    int out = 0;
    stack.Push(1);
    stack.Push(2);
    EXPECT_EQ(stack.Pop(&out), 1);
    EXPECT_EQ(out, 2);
    EXPECT_EQ(stack.Pop(&out), 1);
    EXPECT_EQ(out, 1);
    EXPECT_EQ(stack.Pop(&out), 0);

    list = Make({1, 2, 3});
    list.ToPos(1);
    list.Truncate(0);
    EXPECT_EQ(Items(list), (std::vector<int>{1}));
    EXPECT_EQ(list.IsEnd(), 1);
    list = Make({1, 2, 3});
    list.ToPos(1);
    list.Truncate(1);
    EXPECT_EQ(Items(list), (std::vector<int>{3}));
    list = Make({1, 2, 3});
    list.ToEnd();
    list.Truncate(1);
    EXPECT_EQ(list.GetLength(), 0U);
    list = Make({1, 2, 3});
    list.ToStart();
    list.Truncate(0);
    EXPECT_EQ(list.GetLength(), 0U);
}

TEST(List, CopyRulesAndComparison) {
    IntList target = Make({1, 2});
    target.ToEnd();
    target = IntList(); // kept as shipped: an empty source changes nothing
    EXPECT_EQ(Items(target), (std::vector<int>{1, 2}));
    target.ToEnd();
    target = Make({7});
    EXPECT_EQ(target.GetLength(), 1U);
    EXPECT_EQ(target.CurItem(), 7);
    target = Make({4, 5, 6});
    target.ToPos(1);
    void* node = target.CurItemRef();
    target = Make({8, 9});
    EXPECT_EQ(target.IsStart(), 1);
    EXPECT_EQ(Items(target), (std::vector<int>{8, 9}));
    EXPECT_EQ(target.CurItemRef(), node); // the existing nodes are reused

    EXPECT_EQ(IntList() == IntList(), 1);
    EXPECT_EQ(Make({1, 2}) == Make({1, 2}), 1);
    EXPECT_EQ(Make({1, 2}) != Make({1, 3}), 1);
    EXPECT_EQ(Make({1}) == Make({1, 1}), 0);

    IntList a = Make({1, 2, 3, 4});
    IntList b = Make({7, 8});
    a.ToPos(1);
    b.ToStart();
    a.CopyItemsFrom(b, 2);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 7, 8, 4}));
    a.ToPos(2);
    b.ToStart();
    EXPECT_EQ(CodeOf([&] { a.CopyItemsFrom(b, 3); }), 5U);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 7, 7, 8}));
    int raw[] = {5, 6, 7};
    a.ToPos(2);
    a.CopyItemsFrom(raw, 0, 3);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 7, 5, 6}));
    CZRB_Vector<int> vec(raw, 3);
    a.ToStart();
    a.CopyItemsFrom(vec, 2, 3);
    int out[4] = {0, 0, 0, 0};
    a.ToPos(1);
    a.CopyItemsTo(out, 1, 5);
    EXPECT_EQ(std::vector<int>(out, out + 4), (std::vector<int>{0, 7, 5, 6}));
    EXPECT_EQ(a.CurItem(), 7);

    IntList part;
    a.Extract(part, 2);
    EXPECT_EQ(Items(part), (std::vector<int>{7, 5}));
    a.ToPos(2);
    a.Extract(a, 5);
    EXPECT_EQ(Items(a), (std::vector<int>{5, 6}));
    IntList none;
    EXPECT_EQ(CodeOf([&] { none.Extract(part, 1); }), 5U);
    EXPECT_EQ(CodeOf([&] { none.CopyItemsTo(out, 0, 1); }), 5U);
    EXPECT_EQ(CodeOf([&] { none.CopyItemsFrom(raw, 0, 1); }), 5U);
}

TEST(List, FindSwapAndStableSort) {
    IntList list = Make({3, 1, 2, 1});
    list.ToPos(2);
    EXPECT_EQ(list.FindToEnd(3), 0);
    EXPECT_EQ(list.CurItem(), 2);
    EXPECT_EQ(list.FindToStart(1), 1);
    EXPECT_EQ(list.ItemsFromStart(), 1U);
    EXPECT_EQ(list.FindToEnd(1), 1);
    EXPECT_EQ(list.ItemsFromStart(), 1U);

    list.ToStart();
    void* first = list.CurItemRef();
    list.SwapItems(first);
    EXPECT_EQ(Items(list), (std::vector<int>{1, 3, 2, 1}));
    list.ToEnd();
    EXPECT_EQ(CodeOf([&] { list.SwapItems(list.CurItemRef()); }), 5U);
    EXPECT_EQ(CodeOf([&] { list.SwapItems(nullptr); }), 5U);

    list = Make({3, 1, 2});
    list.ToStart();
    list.Sort(CompareInts, 1);
    EXPECT_EQ(list.CurItem(), 3); // the cursor keeps its node
    EXPECT_EQ(Items(list), (std::vector<int>{1, 2, 3}));
    list.Sort(CompareInts, 0);
    EXPECT_EQ(Items(list), (std::vector<int>{3, 2, 1}));

    // Stability: order by tens only.
    auto tens = [](const int& a, const int& b) -> signed char {
        return static_cast<signed char>(a / 10 > b / 10 ? 1 : (a / 10 < b / 10 ? -1 : 0));
    };
    list = Make({21, 10, 22, 11, 23, 12});
    list.Sort(tens, 1);
    EXPECT_EQ(Items(list), (std::vector<int>{10, 11, 12, 21, 22, 23}));
    list.Sort(tens, 0);
    EXPECT_EQ(Items(list), (std::vector<int>{21, 22, 23, 10, 11, 12}));
}

TEST(List, ShippedInsertionLinks) {
    // InsertItems at the head: forward order is complete, the old head keeps no previous link.
    IntList list = Make({1, 2, 3});
    list.ToStart();
    int raw[] = {7, 8};
    list.InsertItems(raw, 2, 0);
    EXPECT_EQ(list.GetLength(), 5U);
    EXPECT_EQ(list.CurItem(), 1);
    EXPECT_EQ(list.IsStart(), 0);
    EXPECT_EQ(list.ItemsFromStart(), 0U);
    EXPECT_EQ(Items(list), (std::vector<int>{7, 8, 1, 2, 3}));
    list.ToPos(2);
    list.DeleteItem(); // unlinks through the stale previous link
    list.DeleteItems(5);
    list.AppendItem(4);
    EXPECT_GE(list.GetLength(), 1U);

    // In the middle: the cursor's previous link still skips the new items.
    list = Make({1, 2, 3});
    list.ToPos(1);
    list.InsertItems(raw, 2, 0);
    EXPECT_EQ(list.Prev(1), 2);
    EXPECT_EQ(list.CurItem(), 1);
    EXPECT_EQ(Items(list), (std::vector<int>{1, 7, 8, 2, 3}));

    // InsertList: the tail member designates the last inserted item.
    list = Make({1, 2, 3});
    list.ToPos(1);
    IntList src = Make({5, 6});
    list.InsertList(src);
    EXPECT_EQ(list.CurItem(), 6);
    EXPECT_EQ(list.IsEnd(), 1);
    EXPECT_EQ(list.GetLength(), 5U);
    EXPECT_EQ(list.ToEnd(), 6);
    EXPECT_EQ(Items(list), (std::vector<int>{1, 5, 6, 2, 3}));
    list.ToEnd();
    list.AppendItem(9); // after the tail member
    list.Sort(CompareInts, 1);
    list.Truncate(0);

    // InsertItems from a list that runs out.
    list = Make({1, 2, 3});
    list.ToPos(1);
    src.ToStart();
    EXPECT_EQ(CodeOf([&] { list.InsertItems(src, 3); }), 5U);
    EXPECT_EQ(list.GetLength(), 5U);
    CZRB_Vector<int> vec(raw, 2);
    list.ToStart();
    list.InsertItems(vec, 5, 1);
    EXPECT_EQ(list.GetLength(), 6U);
    list.ToStart();
    list.InsertItems(list, 2);
    EXPECT_EQ(list.GetLength(), 8U);
    list.InsertList(list);
    IntList copy(list);
    copy.Truncate(1);
}

// Random sequences including the shipped insertions never crash, loop, leak or double-free
// (the sanitizer build checks the memory side); the length always matches the items owned.
TEST(List, RandomOperationsStayMemorySafe) {
    std::mt19937 random(11);
    int raw[] = {1, 2, 3, 4};
    for (int round = 0; round < 200; ++round) {
        IntList list = Make({5, 6, 7});
        IntList other = Make({8, 9});
        other.ToStart();
        for (int step = 0; step < 60; ++step) {
            const unsigned int length = list.GetLength();
            const unsigned int pos = length > 0 ? static_cast<unsigned int>(random() % length) : 0;
            try {
                switch (random() % 14) {
                case 0:
                    list.InsertItems(raw, 2, 1);
                    break;
                case 1:
                    list.InsertList(other);
                    break;
                case 2:
                    list.InsertItems(other, 1);
                    break;
                case 3:
                    list.DeleteItem();
                    break;
                case 4:
                    list.DeleteItems(2);
                    break;
                case 5:
                    list.Truncate(static_cast<unsigned char>(random() % 2));
                    break;
                case 6:
                    list.AppendItem(static_cast<int>(step));
                    break;
                case 7:
                    list.InsertItem(static_cast<int>(step));
                    break;
                case 8:
                    list.Sort(CompareInts, static_cast<unsigned char>(random() % 2));
                    break;
                case 9:
                    if (length > 0) {
                        list.ToPos(pos);
                    }
                    break;
                case 10:
                    list.Next(3);
                    list.Prev(2);
                    break;
                case 11:
                    list.SwapItems(list.CurItemRef());
                    break;
                case 12:
                    other = list;
                    other.ToStart();
                    break;
                default: {
                    int out;
                    list.Pop(&out);
                    list.FindToStart(6);
                }
                }
            } catch (const CZRB_Exception& e) {
                ASSERT_TRUE(e.code == 5U) << e.code;
            }
            (void)list.ItemsFromStart();
            (void)list.ItemsToEnd();
            IntList copy(list);
            (void)(copy == list);
        }
    }
}

// The well-defined operations against std::list with a cursor position.
TEST(List, RandomOperationsMatchStdList) {
    std::mt19937 random(3);
    IntList list;
    std::list<int> model;
    std::list<int>::iterator cursor = model.end();
    for (int step = 0; step < 5000; ++step) {
        const int value = static_cast<int>(random() % 30);
        const bool hasCursor = cursor != model.end();
        switch (random() % 9) {
        case 0:
            list.AppendItem(value);
            cursor = model.insert(model.end(), value);
            break;
        case 1:
            if (hasCursor || model.empty()) {
                list.InsertItem(value);
                cursor = model.insert(hasCursor ? cursor : model.end(), value);
            }
            break;
        case 2:
            if (hasCursor) {
                list.DeleteItem();
                const bool wasTail = std::next(cursor) == model.end();
                const bool wasHead = cursor == model.begin();
                auto after = model.erase(cursor);
                cursor = model.empty()           ? model.end()
                         : (wasTail && !wasHead) ? std::prev(model.end())
                                                 : after;
            }
            break;
        case 3:
            if (hasCursor) {
                EXPECT_EQ(list.Next(2), *cursor);
                for (int k = 0; k < 2 && std::next(cursor) != model.end(); ++k) {
                    ++cursor;
                }
            }
            break;
        case 4:
            if (hasCursor) {
                EXPECT_EQ(list.Prev(1), *cursor);
                if (cursor != model.begin()) {
                    --cursor;
                }
            }
            break;
        case 5:
            if (!model.empty()) {
                const unsigned int i = static_cast<unsigned int>(random() % model.size());
                cursor = std::next(model.begin(), i);
                EXPECT_EQ(list.ToPos(i), *cursor);
            }
            break;
        case 6:
            if (hasCursor && random() % 4 == 0) {
                const bool before = random() % 2 == 0;
                list.Truncate(before ? 1 : 0);
                if (before) {
                    model.erase(model.begin(), std::next(cursor));
                } else {
                    model.erase(cursor, model.end());
                }
                cursor = model.empty() ? model.end() : std::prev(model.end());
            }
            break;
        case 7:
            if (hasCursor && list.FindToEnd(value) == 1) {
                cursor = std::find(cursor, model.end(), value);
            }
            break;
        default: {
            int out = -1;
            EXPECT_EQ(list.Pop(&out), model.empty() ? 0 : 1);
            if (!model.empty()) {
                EXPECT_EQ(out, model.back());
                model.pop_back();
                cursor = model.empty() ? model.end() : std::prev(model.end());
            }
        }
        }
        ASSERT_EQ(list.GetLength(), model.size());
        ASSERT_EQ(list.ItemsFromStart(),
                  cursor == model.end()
                      ? 0U
                      : static_cast<unsigned int>(std::distance(model.begin(), cursor)));
        if (step % 50 == 0) {
            void* ref = list.CurItemRef();
            ASSERT_EQ(Items(list), std::vector<int>(model.begin(), model.end()));
            if (ref != nullptr) {
                list.ToPos(static_cast<unsigned int>(std::distance(model.begin(), cursor)));
            }
        }
    }
}
