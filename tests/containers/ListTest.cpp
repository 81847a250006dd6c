#include "CZRB_List.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <list>
#include <random>
#include <string>
#include <vector>

namespace {

using IntList = CZRB_List<int>;

// "1 [2] 3": the items from the head, the cursor's item bracketed; the cursor is restored.
std::string State(IntList& list) {
    void* cursor = list.CurItemRef();
    std::string text;
    unsigned int at = 0;
    for (unsigned int i = 0; i < list.GetLength(); ++i) {
        const std::string item = std::to_string(list[i]);
        const bool current = list.CurItemRef() == cursor;
        at = current ? i : at;
        text += (i > 0 ? " " : "") + (current ? "[" + item + "]" : item);
    }
    if (cursor != nullptr) {
        list.ToPos(at);
    }
    return text;
}

IntList Make(std::vector<int> items, unsigned int cursor = 0) {
    IntList list;
    list.AppendItems(items.data(), static_cast<unsigned int>(items.size()), 0);
    if (!items.empty()) {
        list.ToPos(cursor);
    }
    return list;
}

} // namespace

TEST(List, CursorMovesAndPositions) {
    IntList list = Make({1, 2, 3, 4});
    EXPECT_EQ(list.Next(3), 1);
    EXPECT_EQ(list.Next(5), 4);
    EXPECT_EQ(list.IsEnd(), 1);
    EXPECT_EQ(list << 2, 4);
    EXPECT_EQ(State(list), "1 [2] 3 4");
    EXPECT_EQ(list.ItemsFromStart() * 10 + list.ItemsToEnd(), 12U);
    EXPECT_EQ(list.Prev(9), 2);
    EXPECT_EQ(list.IsStart(), 1);
    EXPECT_EQ(list >> 0, 1);
    EXPECT_EQ(list[2], 3);
    EXPECT_EQ(State(list), "1 2 [3] 4");
    EXPECT_EQ(CodeOf([&] { list[4]; }), 5U);
    EXPECT_EQ(list.ToEnd() * 10 + list.ToStart(), 41);

    IntList empty;
    EXPECT_EQ(empty.IsStart() + empty.IsEnd(), 2);
    EXPECT_EQ(empty.CurItemRef(), nullptr);
    EXPECT_EQ(empty.ItemsFromStart() + empty.ItemsToEnd(), 0U);
    for (auto action : std::vector<std::function<void()>>{
             [&] { empty.CurItem(); }, [&] { empty.Next(1); }, [&] { empty.Prev(1); },
             [&] { empty.ToStart(); }, [&] { empty.ToEnd(); }, [&] { empty[0]; }}) {
        EXPECT_EQ(CodeOf(action), 5U);
    }
    EXPECT_EQ(CodeOf([&] { IntList(nullptr, 0); }), 9U);
    EXPECT_EQ(IntList(0U, 5).GetLength(), 0U);
    IntList three(3U, 5);
    EXPECT_EQ(State(three), "[5] 5 5");
}

TEST(List, AddingItems) {
    IntList list;
    *list.InsertItem() = 5; // empty list: the only node
    list.AppendItem(7);
    list.ToStart();
    list.InsertItem(4); // the cursor moves to it: 6 lands before 7 below
    list.Next(2);
    list.InsertItem(6);
    EXPECT_EQ(*list.AppendItem(), 0);
    int raw[] = {1, 2, 3};
    IntList other;
    other.AppendItems(raw, 0, 0);
    EXPECT_EQ(other.CurItemRef(), nullptr);
    other.AppendItems(raw, 2, 1);
    other &= list;
    EXPECT_EQ(State(other), "2 3 4 5 6 7 [0]");
    other.AppendList(other);
    EXPECT_EQ(other.GetLength(), 14U);

    CZRB_Vector<int> vec(raw, 3);
    IntList fromVec;
    fromVec &= vec;
    fromVec.ToStart();
    IntList copy = fromVec.AppendItems(fromVec, 2); // from its own cursor
    EXPECT_EQ(State(fromVec), "1 2 3 1 [2]");
    EXPECT_EQ(State(copy), "[1] 2 3 1 2");
    fromVec = vec;
    EXPECT_EQ(State(fromVec), "1 2 [3]");
    CZRB_Vector<int> none;
    fromVec = none;
    EXPECT_EQ(fromVec.GetLength() + (fromVec.CurItemRef() == nullptr), 1U);

    IntList target;
    IntList source = Make({8, 9});
    target.InsertList(source);
    EXPECT_EQ(State(target), "8 [9]");
}

TEST(List, RemovingItems) {
    // DeleteItem and Truncate are also followed step by step by the run against std::list.
    IntList list = Make({1, 2, 3, 4, 5}, 1);
    EXPECT_EQ(State(list.DeleteItems(2)), "1 [4] 5");
    EXPECT_EQ(State(list.DeleteItems(9)), "[1]"); // stops after the tail, on the new tail
    int out = 0;
    list.Push(7);
    EXPECT_EQ(list.Pop(&out) * 10 + out, 17);
    EXPECT_EQ(list.Pop(&out) * 10 + out, 11);
    EXPECT_EQ(list.Pop(&out), 0);
    list.DeleteItem(); // no cursor: nothing
    list.DeleteItems(2);
    list.Truncate(1);
}

TEST(List, CopyRulesAndComparison) {
    IntList target = Make({1, 2}, 1);
    target = IntList(); // kept as shipped: an empty source changes nothing
    EXPECT_EQ(State(target), "1 [2]");
    target = Make({7});
    EXPECT_EQ(State(target), "[7]");
    target = Make({4, 5, 6});
    target.ToPos(1);
    void* node = target.CurItemRef();
    target = Make({8, 9});
    EXPECT_EQ(State(target), "[8] 9");
    target.Next(1);
    EXPECT_EQ(target.CurItemRef(), node); // the existing nodes are reused

    EXPECT_EQ(IntList() == IntList(), 1);
    EXPECT_EQ(Make({1, 2}) != Make({1, 3}), 1);
    EXPECT_EQ(Make({1}) == Make({1, 1}), 0);

    IntList a = Make({1, 2, 3, 4}, 1);
    IntList b = Make({7, 8});
    a.CopyItemsFrom(b, 2);
    EXPECT_EQ(State(a), "1 [7] 8 4");
    a.ToPos(2);
    EXPECT_EQ(CodeOf([&] { a.CopyItemsFrom(b, 3); }), 5U);
    EXPECT_EQ(State(a), "1 7 [7] 8");
    int raw[] = {5, 6, 7};
    a.CopyItemsFrom(raw, 0, 3);
    EXPECT_EQ(State(a), "1 7 [5] 6");
    CZRB_Vector<int> vec(raw, 3);
    a.ToStart();
    a.CopyItemsFrom(vec, 2, 3);
    int out[4] = {0, 0, 0, 0};
    a.ToPos(1);
    a.CopyItemsTo(out, 1, 5);
    EXPECT_EQ(std::vector<int>(out, out + 4), (std::vector<int>{0, 7, 5, 6}));

    IntList part;
    a.Extract(part, 2);
    EXPECT_EQ(State(part), "7 [5]");
    EXPECT_EQ(State(a), "7 [7] 5 6");
    a.ToPos(2);
    a.Extract(a, 5);
    EXPECT_EQ(State(a), "5 [6]");
    IntList none;
    EXPECT_EQ(CodeOf([&] { none.Extract(part, 1); }), 5U);
    EXPECT_EQ(CodeOf([&] { none.CopyItemsTo(out, 0, 1); }), 5U);
    EXPECT_EQ(CodeOf([&] { none.CopyItemsFrom(raw, 0, 1); }), 5U);
    EXPECT_EQ(CodeOf([&] { none.InsertItems(raw, 1, 0); }), 5U);
}

TEST(List, FindSwapAndStableSort) {
    IntList list = Make({3, 1, 2, 1}, 2);
    EXPECT_EQ(list.FindToEnd(3), 0);
    EXPECT_EQ(list.FindToStart(1), 1);
    EXPECT_EQ(State(list), "3 [1] 2 1");
    EXPECT_EQ(list.FindToEnd(1), 1);
    EXPECT_EQ(list.ItemsFromStart(), 1U);

    list.ToStart();
    list.SwapItems(list.CurItemRef());
    EXPECT_EQ(State(list), "1 [3] 2 1");
    list.ToEnd();
    EXPECT_EQ(CodeOf([&] { list.SwapItems(list.CurItemRef()); }), 5U);
    EXPECT_EQ(CodeOf([&] { list.SwapItems(nullptr); }), 5U);

    auto tens = [](const int& a, const int& b) { return CompareInts(a / 10, b / 10); };
    list = Make({21, 10, 22, 11, 23, 12});
    list.Sort(tens, 1);
    EXPECT_EQ(State(list), "10 11 12 [21] 22 23"); // stable; the cursor keeps its node
    list.Sort(tens, 0);
    EXPECT_EQ(State(list), "[21] 22 23 10 11 12");
}

TEST(List, ShippedInsertionLinks) {
    int raw[] = {7, 8};
    // At the head: the first new item becomes the head, the old head keeps no previous link.
    IntList list = Make({1, 2, 3});
    list.InsertItems(raw, 2, 0);
    EXPECT_EQ(State(list), "7 8 [1] 2 3");
    EXPECT_EQ(list.IsStart() + list.ItemsFromStart(), 0U);
    list.DeleteItem(); // unlinks through the stale previous link
    list.DeleteItems(5);
    list.AppendItem(4);

    // In the middle: the cursor's previous link still skips the new items.
    list = Make({1, 2, 3}); // assignment puts the cursor on the head
    list.ToPos(1);
    list.InsertItems(raw, 2, 0);
    EXPECT_EQ(State(list), "1 7 8 [2] 3");
    EXPECT_EQ(list.Prev(1), 2);
    EXPECT_EQ(list.CurItem(), 1);

    // InsertList: the tail member designates the last inserted item.
    list = Make({1, 2, 3}); // assignment puts the cursor on the head
    list.ToPos(1);
    IntList src = Make({5, 6});
    list.InsertList(src);
    EXPECT_EQ(State(list), "1 5 [6] 2 3");
    EXPECT_EQ(list.IsEnd() * 10 + list.ToEnd(), 16);
    list.AppendItem(9); // after the tail member
    list.Sort(CompareInts, 1);
    list.Truncate(0);

    // InsertItems from a list that runs out: the copies made stay linked.
    list = Make({1, 2, 3}); // assignment puts the cursor on the head
    list.ToPos(1);
    src.ToStart();
    EXPECT_EQ(CodeOf([&] { list.InsertItems(src, 3); }, &src), 5U);
    EXPECT_EQ(list.GetLength(), 5U);
    CZRB_Vector<int> vec(raw, 2);
    list.ToStart();
    list.InsertItems(vec, 5, 1);
    EXPECT_EQ(list.GetLength(), 6U);
    list.ToStart();
    list.InsertItems(list, 2);
    EXPECT_EQ(list.GetLength(), 8U);
    list.InsertList(list); // copies what the links reach from the head
}

// Random sequences including the shipped insertions never crash, loop, leak or double-free
// (the sanitizer build checks the memory side).
TEST(List, RandomOperationsStayMemorySafe) {
    std::mt19937 random(11);
    int raw[] = {1, 2, 3, 4};
    IntList other = Make({8, 9});
    const std::vector<std::function<void(IntList&)>> actions = {
        [&](IntList& l) { l.InsertItems(raw, 2, 1); },
        [&](IntList& l) { l.InsertList(other); },
        [&](IntList& l) { l.InsertItems(other, 1); },
        [&](IntList& l) { l.DeleteItem(); },
        [&](IntList& l) { l.DeleteItems(2); },
        [&](IntList& l) { l.Truncate(static_cast<unsigned char>(random() % 2)); },
        [&](IntList& l) { l.AppendItem(4); },
        [&](IntList& l) { l.InsertItem(5); },
        [&](IntList& l) { l.Sort(CompareInts, static_cast<unsigned char>(random() % 2)); },
        [&](IntList& l) { l.ToPos(static_cast<unsigned int>(random() % (l.GetLength() + 1))); },
        [&](IntList& l) { l.Next(3); },
        [&](IntList& l) { l.Prev(2); },
        [&](IntList& l) { l.FindToStart(6); },
        [&](IntList& l) { l.FindToEnd(4); },
        [&](IntList& l) { l.SwapItems(l.CurItemRef()); },
        [&](IntList& l) { other = l; },
        [&](IntList&) { other.ToStart(); },
        [&](IntList& l) { l.Pop(raw); },
    };
    for (int round = 0; round < 200; ++round) {
        IntList list = Make({5, 6, 7});
        for (int step = 0; step < 60; ++step) {
            try {
                actions[random() % actions.size()](list);
            } catch (const CZRB_Exception& e) {
                ASSERT_EQ(e.code, 5U);
            }
            IntList copy(list);
            EXPECT_LE(copy.GetLength(), list.GetLength());
            EXPECT_LE(list.ItemsFromStart() + list.ItemsToEnd(), list.GetLength());
        }
    }
}

// The well-defined operations against std::list with a cursor position.
TEST(List, RandomOperationsMatchStdList) {
    std::mt19937 random(3);
    IntList list;
    std::list<int> model;
    auto cursor = model.end();
    auto last = [&] { return model.empty() ? model.end() : std::prev(model.end()); };
    for (int step = 0; step < 5000; ++step) {
        const int value = static_cast<int>(random() % 30);
        const bool hasCursor = cursor != model.end();
        const unsigned int choice = static_cast<unsigned int>(random() % 8);
        if (choice == 0 || !hasCursor) {
            list.AppendItem(value);
            cursor = model.insert(model.end(), value);
        } else if (choice == 1) {
            list.InsertItem(value);
            cursor = model.insert(cursor, value);
        } else if (choice == 2) {
            list.DeleteItem();
            const bool wasTail = std::next(cursor) == model.end();
            cursor = model.erase(cursor);
            cursor = wasTail ? last() : cursor;
        } else if (choice == 3) {
            EXPECT_EQ(list.Next(2), *cursor);
            for (int k = 0; k < 2 && std::next(cursor) != model.end(); ++k) {
                ++cursor;
            }
        } else if (choice == 4) {
            EXPECT_EQ(list.Prev(1), *cursor);
            cursor = cursor == model.begin() ? cursor : std::prev(cursor);
        } else if (choice == 5) {
            const unsigned int i = static_cast<unsigned int>(random() % model.size());
            cursor = std::next(model.begin(), i);
            EXPECT_EQ(list.ToPos(i), *cursor);
        } else if (choice == 6 && random() % 4 == 0) {
            const bool before = random() % 2 == 0;
            list.Truncate(before ? 1 : 0);
            model.erase(before ? model.begin() : cursor, before ? std::next(cursor) : model.end());
            cursor = last();
        } else if (choice == 7 && list.FindToEnd(value) == 1) {
            cursor = std::find(cursor, model.end(), value);
        } else if (choice == 6) {
            int out = -1;
            EXPECT_EQ(list.Pop(&out), 1);
            EXPECT_EQ(out, model.back());
            model.pop_back();
            cursor = last();
        }
        ASSERT_EQ(list.GetLength(), model.size());
        ASSERT_EQ(list.ItemsToEnd(),
                  cursor != model.end()
                      ? static_cast<unsigned int>(std::distance(cursor, model.end()) - 1)
                      : 0U);
        if (step % 50 == 0) {
            ASSERT_EQ(list == Make(std::vector<int>(model.begin(), model.end())), 1);
        }
    }
}
