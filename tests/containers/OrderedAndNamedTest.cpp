#include "CZRB_DoubleVector.h"
#include "CZRB_Int32List.h"
#include "CZRB_Int32Vector.h"
#include "CZRB_Uint32List.h"
#include "CZRB_Uint8Vector.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

template <class Base>
struct Probe : Base {
    using Base::Compare;
};

const double kNaN = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(Ordered, CompareIsTheNaturalOrderOfEachType) {
    using I = Probe<CZRB_OrderedVector<int>>;
    using U = Probe<CZRB_OrderedList<unsigned int>>;
    using D = Probe<CZRB_OrderedVector<double>>;
    using S = Probe<CZRB_OrderedList<signed char>>;
    EXPECT_EQ(I::Compare(3, 3), 0); // the signs also decide the sorts below
    EXPECT_EQ(I::Compare(-1, 1), -1);
    EXPECT_EQ(U::Compare(0xFFFFFFFFU, 1U), 1);
    EXPECT_EQ(S::Compare(-128, 127), -1);
    EXPECT_EQ(D::Compare(kNaN, 1.0), 0);
    EXPECT_EQ(D::Compare(1.0, kNaN), 0);
    EXPECT_EQ(D::Compare(-0.0, 0.0), 0);
}

TEST(Ordered, MinMaxAndSort) {
    int items[] = {3, 1, 2, 1};
    CZRB_Int32Vector v(items, 4);
    EXPECT_EQ(&v.Min(), &v[1]);
    EXPECT_EQ(&v.Max(), &v[0]);
    int fives[] = {5, 2, 5};
    CZRB_Int32Vector w(fives, 3);
    EXPECT_EQ(&w.Max(), &w[0]);
    CZRB_Int32Vector empty;
    EXPECT_EQ(CodeOf([&] { empty.Min(); }), 5U);
    EXPECT_EQ(CodeOf([&] { empty.Max(); }), 5U);
    EXPECT_EQ(CodeOf([&] { empty.Sort(1); }), 2U);
    v.Sort(1);
    EXPECT_EQ(v[0] * 1000 + v[1] * 100 + v[2] * 10 + v[3], 1123);
    v.Sort(0).Sort(0);
    EXPECT_EQ(v[0] * 1000 + v[1] * 100 + v[2] * 10 + v[3], 3211);

    double withNaN[] = {kNaN, 1.0, -2.0};
    CZRB_DoubleVector d(withNaN, 3);
    EXPECT_TRUE(std::isnan(d.Min()));
    double later[] = {1.0, kNaN, -2.0, 4.0};
    CZRB_DoubleVector e(later, 4);
    EXPECT_EQ(e.Min(), -2.0);
    EXPECT_EQ(e.Max(), 4.0);

    CZRB_Int32List list(items, 4);
    list.ToPos(2);
    list.Min() = 0; // a reference to the first smallest item, 1
    EXPECT_EQ(list.Max(), 3);
    EXPECT_EQ(list.CurItem(), 2); // the cursor did not move
    EXPECT_EQ(list[1], 0);
    list.Sort(1);
    EXPECT_EQ(list[0] * 1000 + list[1] * 100 + list[2] * 10 + list[3], 123);
    list.Sort(0);
    EXPECT_EQ(list[0] * 1000 + list[1] * 100 + list[2] * 10 + list[3], 3210);
    CZRB_Int32List none;
    EXPECT_EQ(CodeOf([&] { none.Max(); }), 5U);
    none.Sort(1);
}

TEST(Named, ConstructionAndAssignmentFromTheBases) {
    EXPECT_EQ(CodeOf([] { CZRB_Int32Vector v(0U); }), 9U);
    EXPECT_EQ(CodeOf([] { CZRB_Int32Vector v(nullptr, 0); }), 9U);
    EXPECT_EQ(CodeOf([] { CZRB_Int32List l(nullptr, 0); }), 9U);
    // A literal 0 count with a value must not be ambiguous with the array form.
    EXPECT_EQ(CodeOf([] { CZRB_Uint8Vector v(0, 0x55); }), 9U);
    EXPECT_EQ(CodeOf([] { CZRB_Vector<unsigned int>().Create(0, 1U); }), 9U);
    EXPECT_EQ(CZRB_Uint32List(0, 4U).GetLength(), 0U);

    CZRB_Int32Vector named(2U, 7);
    CZRB_OrderedVector<int> ordered(3U, 1);
    CZRB_Vector<int> plain(4U, 2);
    named = ordered;
    EXPECT_EQ(named.GetLength(), 3U);
    named = plain;
    EXPECT_EQ(named.GetLength(), 4U);
    CZRB_Int32List list(2U, 9);
    named = list;
    EXPECT_EQ(named.GetLength(), 2U);
    EXPECT_EQ(named[1], 9);

    CZRB_Int32List otherList;
    otherList = named;
    EXPECT_EQ(otherList.GetLength(), 2U);
    CZRB_OrderedList<int> orderedList(3U, 5);
    otherList = orderedList;
    EXPECT_EQ(otherList.ToEnd(), 5);
}

TEST(Named, TypedByteAccessInBothOrders) {
    unsigned char bytes[] = {0x12, 0x34, 0x56, 0x78};
    CZRB_Uint8Vector v(bytes, 4);
    const ZRB::t_ByteOrdering little = ZRB::BYTE_ORDER_LITTLE_ENDIAN;
    const ZRB::t_ByteOrdering big = ZRB::BYTE_ORDER_BIG_ENDIAN;
    EXPECT_EQ(v.GetUint32(0, little), 0x78563412U);
    EXPECT_EQ(v.GetUint32(0, big), 0x12345678U);
    EXPECT_EQ(v.GetUint16(2, big), 0x5678);
    EXPECT_EQ(v.GetInt16(1, little), 0x5634);
    EXPECT_EQ(CodeOf([&] { v.GetUint16(3, big); }), 2U);
    EXPECT_EQ(CodeOf([&] { v.GetUint64(0, big); }), 2U);
    EXPECT_EQ(CodeOf([&] { v.SetInt32(1, 1, big); }), 2U);
    EXPECT_EQ(CodeOf([&] { v.GetInt32(0xFFFFFFFEU, big); }), 2U);
    EXPECT_EQ(v.GetUint32(0, big), 0x12345678U); // nothing written by the failed set

    v.SetUint32(0x11223344U, 0, big);
    EXPECT_EQ(v[0] * 0x1000000U + v[1] * 0x10000U + v[2] * 0x100U + v[3], 0x11223344U);
    v.SetUint32(0x11223344U, 0, little);
    EXPECT_EQ(v[0] * 0x1000000U + v[1] * 0x10000U + v[2] * 0x100U + v[3], 0x44332211U);
    v.SetInt16(-2, 2, big);
    EXPECT_EQ(v.GetInt16(2, big), -2);
    EXPECT_EQ(v.GetUint16(2, big), 0xFFFE);
    EXPECT_EQ(v.GetLength(), 4U);

    CZRB_Uint8Vector wide(16U);
    for (ZRB::t_ByteOrdering order : {little, big}) {
        wide.SetInt64(-0x123456789ALL, 8, order);
        EXPECT_EQ(wide.GetInt64(8, order), -0x123456789ALL);
        wide.SetUint64(0x0102030405060708ULL, 0, order);
        EXPECT_EQ(wide[0], order == big ? 0x01 : 0x08);
        wide.SetDouble(-1.5, 8, order);
        EXPECT_EQ(wide.GetDouble(8, order), -1.5);
        EXPECT_EQ(wide.GetUint64(8, order), 0xBFF8000000000000ULL);
        wide.SetFloat(0.25f, 12, order);
        EXPECT_EQ(wide.GetFloat(12, order), 0.25f);
        EXPECT_EQ(wide.GetUint32(12, order), 0x3E800000U);
        wide.SetUint16(0xBEEF, 14, order).SetInt32(-7, 0, order);
        EXPECT_EQ(wide.GetUint16(14, order), 0xBEEF);
        EXPECT_EQ(wide.GetInt32(0, order), -7);
        EXPECT_EQ(wide.GetUint32(0, order), 0xFFFFFFF9U);
    }
    EXPECT_EQ(wide.GetLength(), 16U);
}

TEST(Named, RootMeanSquare) {
    double values[] = {3.0, 4.0};
    EXPECT_DOUBLE_EQ(CZRB_DoubleVector(values, 2).GetRMS(), std::sqrt(12.5));
    EXPECT_TRUE(std::isnan(CZRB_DoubleVector().GetRMS()));
    EXPECT_DOUBLE_EQ(CZRB_DoubleVector(3U, -2.0).GetRMS(), 2.0);
}
