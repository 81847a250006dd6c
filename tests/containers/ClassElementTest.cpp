// Class elements: array-new storage, assignment copies, and an explicit instantiation of
// every member, as the value classes of the library do for their own containers.
#include "CZRB_List.h"
#include "CZRB_Vector.h"

#include <gtest/gtest.h>

#include <string>

// Not in an anonymous namespace: the explicit instantiations below need external linkage.
struct Probe {
    static int alive;
    std::string text;
    Probe() : text("-") { ++alive; }
    Probe(const char* t) : text(t) { ++alive; }
    Probe(const Probe& other) : text(other.text) { ++alive; }
    Probe& operator=(const Probe& other) = default;
    ~Probe() { --alive; }
    unsigned char operator==(const Probe& other) const { return text == other.text ? 1 : 0; }
};
int Probe::alive = 0;

namespace {

signed char CompareProbes(const Probe& a, const Probe& b) {
    return static_cast<signed char>(a.text.compare(b.text) > 0 ? 1 : (a.text < b.text ? -1 : 0));
}

} // namespace

template class CZRB_Vector<Probe>;
template class CZRB_List<Probe>;

TEST(ClassElements, StorageCopiesAndSortWithoutLeaks) {
    {
        CZRB_Vector<Probe> v(3U);
        EXPECT_EQ(v[1].text, "-"); // default-constructed
        v[0] = "c";
        v[1] = "a";
        v[2] = "b";
        v.AppendItem(v[1]);
        v.Sort(CompareProbes, 1);
        EXPECT_EQ(v[0].text + v[1].text + v[2].text + v[3].text, "aabc");
        v.SwapItems(0, 3);
        v.InvertItemsOrder(1, 2);
        EXPECT_EQ(v[0].text + v[1].text + v[2].text + v[3].text, "cbaa");
        unsigned int index = 0;
        EXPECT_EQ(v.FindToEnd(Probe("a"), &index, 0), 1);
        EXPECT_EQ(index, 2U);
        v.DeleteItems(0, 2, 1);
        v.Recreate(4, 0, Probe("z"));
        EXPECT_EQ(v[3].text, "z");

        CZRB_List<Probe> list;
        list = v;
        list.Sort(CompareProbes, 0);
        EXPECT_EQ(list.ToStart().text, "z");
        CZRB_Vector<Probe> back;
        back = list;
        EXPECT_EQ(back == v, 0);
        list.DeleteItems(2); // the copy above left the cursor on the tail: one deleted
        EXPECT_EQ(list.GetLength(), 3U);
    }
    EXPECT_EQ(Probe::alive, 0);
}
