#include "CZRB_Rect.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>

namespace {
// The four edges of a rectangle as a string, for readable failures.
template <class T>
std::string Edges(const CZRB_Rect<T>& r) {
    return std::to_string(r.GetLeft()) + "," + std::to_string(r.GetTop()) + "," +
           std::to_string(r.GetRight()) + "," + std::to_string(r.GetBottom());
}
} // namespace

TEST(Geometry, PointAndSizeArithmeticIsComponentWiseAndWraps) {
    CZRB_Int32Point a(3, -4);
    const CZRB_Int32Point b(10, 20);
    EXPECT_TRUE(a + b == CZRB_Int32Point(13, 16));
    EXPECT_TRUE(a - b == CZRB_Int32Point(-7, -24));
    CZRB_DoubleSize s(1.5, 2.5);
    s += CZRB_DoubleSize(0.5, 0.5);
    EXPECT_TRUE(s == CZRB_DoubleSize(2.0, 3.0));
    CZRB_Int32Point big(INT_MAX, INT_MIN); // integer sums wrap instead of overflowing
    big += CZRB_Int32Point(1, -1);
    EXPECT_TRUE(big == CZRB_Int32Point(INT_MIN, INT_MAX));
}

TEST(Geometry, RectangleEdgesCornersAndMoves) {
    CZRB_Int32Rect r(0, 0, 10, 5);
    EXPECT_EQ(r.GetWidth(), 10);
    EXPECT_TRUE(r.IsInside(10, 5, 1));
    EXPECT_FALSE(r.IsInside(10, 5, 0));
    EXPECT_TRUE(r.IsInside(CZRB_Int32Point(5, 2), 0));
    EXPECT_TRUE(r.GetBottomLeft() == CZRB_Int32Point(0, 5));

    EXPECT_EQ(Edges<int>(CZRB_Int32Rect(r).MoveTo(100, 100)), "100,100,110,105");
    EXPECT_EQ(Edges<int>(r + CZRB_Int32Size(2, 3)), "0,0,12,8");
    EXPECT_EQ(Edges<int>(CZRB_Int32Rect(r).Translate(-1, 2)), "-1,2,9,7");
    EXPECT_EQ(Edges<int>(CZRB_Int32Rect(CZRB_Int32Point(1, 2), CZRB_Int32Size(3, 4))), "1,2,4,6");
    EXPECT_EQ(Edges<int>(CZRB_Int32Rect(r).SetBottomRight(CZRB_Int32Point(7, 8))), "0,0,7,8");

    EXPECT_TRUE(CZRB_Int32Rect(-3, 0, 0, 0).GetCenter() == CZRB_Int32Point(-1, 0));
    EXPECT_TRUE(CZRB_DoubleRect(-3, 0, 0, 1).GetCenter() == CZRB_DoublePoint(-1.5, 0.5));
    // A centre whose edge sum leaves the int range wraps rather than overflowing.
    EXPECT_EQ(CZRB_Int32Rect(INT_MAX, 0, INT_MAX, 0).GetCenter().GetX(), -1);

    const CZRB_Int32Rect inverted(10, 10, 0, 0);
    EXPECT_FALSE(inverted.IsValid());
    EXPECT_FALSE(inverted.IsInside(5, 5, 1));
}

TEST(Geometry, UnionAndIntersectionFollowTheEdgeRules) {
    const CZRB_Int32Rect a(0, 0, 10, 10);
    const CZRB_Int32Rect touching = a & CZRB_Int32Rect(10, 0, 20, 10);
    EXPECT_EQ(Edges<int>(touching), "10,0,10,10");
    EXPECT_TRUE(touching.IsNull());
    CZRB_Int32Rect apart = a; // Intersect and Merge change the rectangle and return it
    EXPECT_EQ(Edges<int>(apart.Intersect(CZRB_Int32Rect(11, 0, 20, 10))), "0,0,0,0");
    EXPECT_EQ(Edges<int>(apart), "0,0,0,0");
    EXPECT_EQ(Edges<int>(CZRB_Int32Rect(5, 5, 6, 6) | CZRB_Int32Rect()), "0,0,6,6");
    CZRB_Int32Rect grown(5, 5, 6, 6);
    grown |= CZRB_Int32Rect(-1, 7, 2, 9);
    grown &= CZRB_Int32Rect(0, 0, 3, 6);
    EXPECT_EQ(Edges<int>(grown), "0,5,3,6"); // union (-1,5,6,9), then the intersection
    // The union of two inverted rectangles stays inverted and becomes all-zero.
    EXPECT_EQ(Edges<int>(CZRB_Int32Rect(5, 5, 1, 1).Merge(CZRB_Int32Rect(6, 6, 2, 2))), "0,0,0,0");

    EXPECT_TRUE(a.IsInside(a, 1));
    EXPECT_FALSE(a.IsInside(a, 0));
    EXPECT_TRUE(a.IsInside(CZRB_Int32Rect(1, 1, 9, 9), 0));

    const double nan = std::nan("");
    EXPECT_FALSE(CZRB_DoubleRect(nan, 0, nan, 1).IsNull());
    EXPECT_TRUE(CZRB_DoubleRect(0.5, 0, 0.5, 1).IsNull());
}

// Intersection and union against a direct reference over random rectangles: the result must
// contain exactly the points contained in both (or either, bounded) rectangles.
TEST(Geometry, RandomIntersectionsMatchPointContainment) {
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> coordinate(-8, 8);
    for (int round = 0; round < 2000; ++round) {
        const CZRB_Int32Rect a(coordinate(rng), coordinate(rng), coordinate(rng), coordinate(rng));
        const CZRB_Int32Rect b(coordinate(rng), coordinate(rng), coordinate(rng), coordinate(rng));
        const CZRB_Int32Rect both = a & b;
        const CZRB_Int32Rect either = a | b;
        if (!a.IsValid() || !b.IsValid()) {
            continue;
        }
        bool anyCommon = false;
        for (int x = -9; x <= 9; ++x) {
            for (int y = -9; y <= 9; ++y) {
                const bool inBoth = a.IsInside(x, y, 1) && b.IsInside(x, y, 1);
                anyCommon = anyCommon || inBoth;
                if (inBoth) {
                    ASSERT_TRUE(both.IsInside(x, y, 1)) << Edges<int>(a) << " & " << Edges<int>(b);
                }
                if (a.IsInside(x, y, 1) || b.IsInside(x, y, 1)) {
                    ASSERT_TRUE(either.IsInside(x, y, 1));
                }
            }
        }
        if (anyCommon) {
            ASSERT_TRUE(a.IsInside(both, 1) && b.IsInside(both, 1));
        } else {
            ASSERT_TRUE(both == CZRB_Int32Rect());
        }
    }
}

TEST(Geometry, NamedContainersHoldTheNamedClasses) {
    CZRB_Int32Rect rects[2] = {CZRB_Int32Rect(0, 0, 1, 1), CZRB_Int32Rect(2, 2, 3, 3)};
    CZRB_Int32RectVector vector(rects, 2);
    vector.AppendItem(vector[0] | vector[1]);
    unsigned int at = 0;
    EXPECT_TRUE(vector.FindToEnd(CZRB_Int32Rect(0, 0, 3, 3), &at, 0));
    EXPECT_EQ(at, 2U);
    CZRB_Int32RectList list;
    list = vector;
    EXPECT_TRUE(list[1] == rects[1]);
    CZRB_DoublePointVector points(CZRB_DoublePointList(2, CZRB_DoublePoint(0.5, 1.5)).GetLength());
    EXPECT_TRUE(points[1] == CZRB_DoublePoint());
    EXPECT_TRUE(CZRB_Int32SizeVector(3)[2] == CZRB_Int32Size(0, 0));
}
