// CZRB_Point<T>: a position (x, y) in the plane, with the named classes CZRB_Int32Point and
// CZRB_DoublePoint and their vectors and lists.
//
// Integer arithmetic of the geometry templates wraps in two's complement (computed through
// the unsigned type), so no coordinate sum or difference can overflow.
#ifndef CZRB_POINT_H
#define CZRB_POINT_H

#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_Vector.h"

#include <type_traits>

namespace ZRB {
namespace GeometryArith {

// a + b; signed integers wrap in two's complement instead of overflowing.
template <class T>
inline T Add(const T& a, const T& b) {
    if constexpr (std::is_integral<T>::value && std::is_signed<T>::value) {
        using U = typename std::make_unsigned<T>::type;
        return static_cast<T>(static_cast<U>(static_cast<U>(a) + static_cast<U>(b)));
    } else {
        return static_cast<T>(a + b);
    }
}

// a - b; signed integers wrap in two's complement instead of overflowing.
template <class T>
inline T Sub(const T& a, const T& b) {
    if constexpr (std::is_integral<T>::value && std::is_signed<T>::value) {
        using U = typename std::make_unsigned<T>::type;
        return static_cast<T>(static_cast<U>(static_cast<U>(a) - static_cast<U>(b)));
    } else {
        return static_cast<T>(a - b);
    }
}

// Half of a: integers divide by 2 truncating toward zero, floating point multiplies by 0.5.
template <class T>
inline T Half(const T& a) {
    if constexpr (std::is_integral<T>::value) {
        return static_cast<T>(a / 2);
    } else {
        return static_cast<T>(a * 0.5);
    }
}

// The smaller of a and b; a when neither is smaller.
template <class T>
inline const T& Min(const T& a, const T& b) {
    return b < a ? b : a;
}

// The larger of a and b; a when neither is larger.
template <class T>
inline const T& Max(const T& a, const T& b) {
    return a < b ? b : a;
}

} // namespace GeometryArith
} // namespace ZRB

template <class T>
class CZRB_Point : public CZRB_Object {
public:
    // The origin (0, 0).
    CZRB_Point() : m_x(0), m_y(0) {}
    // The point (x, y).
    CZRB_Point(const T& x, const T& y) : m_x(x), m_y(y) {}
    // Copies both coordinates.
    CZRB_Point(const CZRB_Point& other) : CZRB_Object(other) { DataCopy(other); }
    // Copies both coordinates and returns this point.
    CZRB_Point& operator=(const CZRB_Point& other) {
        DataCopy(other);
        return *this;
    }
    // Nothing to free.
    ~CZRB_Point() override {}

    // Sets both coordinates; returns this point.
    CZRB_Point& Set(const T& x, const T& y) {
        m_x = x;
        m_y = y;
        return *this;
    }
    // Sets x only; returns this point.
    CZRB_Point& SetX(const T& x) {
        m_x = x;
        return *this;
    }
    // Sets y only; returns this point.
    CZRB_Point& SetY(const T& y) {
        m_y = y;
        return *this;
    }
    // The x coordinate.
    T GetX() const { return m_x; }
    // The y coordinate.
    T GetY() const { return m_y; }

    // Adds `other` component-wise (integers wrap).
    void operator+=(const CZRB_Point& other) {
        m_x = ZRB::GeometryArith::Add(m_x, other.m_x);
        m_y = ZRB::GeometryArith::Add(m_y, other.m_y);
    }
    // Subtracts `other` component-wise (integers wrap).
    void operator-=(const CZRB_Point& other) {
        m_x = ZRB::GeometryArith::Sub(m_x, other.m_x);
        m_y = ZRB::GeometryArith::Sub(m_y, other.m_y);
    }
    // The component-wise sum as a new point.
    CZRB_Point operator+(const CZRB_Point& other) const {
        CZRB_Point result(*this);
        result += other;
        return result;
    }
    // The component-wise difference as a new point.
    CZRB_Point operator-(const CZRB_Point& other) const {
        CZRB_Point result(*this);
        result -= other;
        return result;
    }
    // 1 when both coordinates are exactly equal, else 0.
    unsigned char operator==(const CZRB_Point& other) const {
        return (m_x == other.m_x && m_y == other.m_y) ? 1 : 0;
    }
    // Negation of operator==.
    unsigned char operator!=(const CZRB_Point& other) const { return *this == other ? 0 : 1; }

protected:
    // Copies both coordinates from `other`.
    void DataCopy(const CZRB_Point& other) {
        m_x = other.m_x;
        m_y = other.m_y;
    }

    T m_x;
    T m_y;
};

extern template class LZRB_API CZRB_Point<int>;
extern template class LZRB_API CZRB_Point<double>;

class LZRB_API CZRB_Int32Point : public CZRB_Point<int> {
public:
    // The origin (0, 0).
    CZRB_Int32Point() {}
    // The point (x, y).
    CZRB_Int32Point(int x, int y) : CZRB_Point<int>(x, y) {}
    // Copies both coordinates.
    CZRB_Int32Point(const CZRB_Int32Point& other) : CZRB_Point<int>(other) {}
    // Copies both coordinates of a point of the template type.
    CZRB_Int32Point(const CZRB_Point<int>& other) : CZRB_Point<int>(other) {}
    // Copies both coordinates and returns this point.
    CZRB_Int32Point& operator=(const CZRB_Int32Point& other) {
        DataCopy(other);
        return *this;
    }
    // Nothing to free.
    ~CZRB_Int32Point() override;
};

class LZRB_API CZRB_DoublePoint : public CZRB_Point<double> {
public:
    // The origin (0, 0).
    CZRB_DoublePoint() {}
    // The point (x, y).
    CZRB_DoublePoint(double x, double y) : CZRB_Point<double>(x, y) {}
    // Copies both coordinates.
    CZRB_DoublePoint(const CZRB_DoublePoint& other) : CZRB_Point<double>(other) {}
    // Copies both coordinates of a point of the template type.
    CZRB_DoublePoint(const CZRB_Point<double>& other) : CZRB_Point<double>(other) {}
    // Copies both coordinates and returns this point.
    CZRB_DoublePoint& operator=(const CZRB_DoublePoint& other) {
        DataCopy(other);
        return *this;
    }
    // Nothing to free.
    ~CZRB_DoublePoint() override;
};

extern template class LZRB_API CZRB_Vector<CZRB_Int32Point>;
extern template class LZRB_API CZRB_List<CZRB_Int32Point>;
extern template class LZRB_API CZRB_Vector<CZRB_DoublePoint>;
extern template class LZRB_API CZRB_List<CZRB_DoublePoint>;

// A vector of CZRB_Int32Point.
class LZRB_API CZRB_Int32PointVector : public CZRB_Vector<CZRB_Int32Point> {
public:
    // Empty vector.
    CZRB_Int32PointVector() {}
    // n origin points; throws 9 when n is 0.
    explicit CZRB_Int32PointVector(unsigned int n) : CZRB_Vector<CZRB_Int32Point>(n) {}
    // n copies of value; throws 9 when n is 0.
    CZRB_Int32PointVector(unsigned int n, const CZRB_Int32Point& value)
        : CZRB_Vector<CZRB_Int32Point>(n, value) {}
    // A copy of items[0..n-1]; throws 9 when n is 0.
    CZRB_Int32PointVector(CZRB_Int32Point* items, unsigned int n)
        : CZRB_Vector<CZRB_Int32Point>(items, n) {}
    // Copy of src.
    CZRB_Int32PointVector(const CZRB_Int32PointVector& src) : CZRB_Vector<CZRB_Int32Point>(src) {}
    // Frees the elements.
    ~CZRB_Int32PointVector() override;
    // Assignment from a list, as the base does.
    using CZRB_Vector<CZRB_Int32Point>::operator=;
    // Copy of src through the base's copy.
    CZRB_Int32PointVector& operator=(const CZRB_Int32PointVector& src) {
        CZRB_Vector<CZRB_Int32Point>::operator=(src);
        return *this;
    }
    // Copy of the base vector src through the base's copy.
    CZRB_Int32PointVector& operator=(const CZRB_Vector<CZRB_Int32Point>& src) {
        CZRB_Vector<CZRB_Int32Point>::operator=(src);
        return *this;
    }
};

// A list of CZRB_Int32Point.
class LZRB_API CZRB_Int32PointList : public CZRB_List<CZRB_Int32Point> {
public:
    // Empty list.
    CZRB_Int32PointList() {}
    // n items holding value, cursor on the first; n = 0 gives an empty list.
    CZRB_Int32PointList(unsigned int n, const CZRB_Int32Point& value)
        : CZRB_List<CZRB_Int32Point>(n, value) {}
    // items[0..n-1], cursor on the first; throws 9 when n is 0.
    CZRB_Int32PointList(CZRB_Int32Point* items, unsigned int n)
        : CZRB_List<CZRB_Int32Point>(items, n) {}
    // Copy of src.
    CZRB_Int32PointList(const CZRB_Int32PointList& src) : CZRB_List<CZRB_Int32Point>(src) {}
    // Frees every node.
    ~CZRB_Int32PointList() override;
    // Assignment from a vector, as the base does.
    using CZRB_List<CZRB_Int32Point>::operator=;
    // Copy of src through the base's copy (an empty src changes nothing).
    CZRB_Int32PointList& operator=(const CZRB_Int32PointList& src) {
        CZRB_List<CZRB_Int32Point>::operator=(src);
        return *this;
    }
    // Copy of the base list src through the base's copy (an empty src changes nothing).
    CZRB_Int32PointList& operator=(const CZRB_List<CZRB_Int32Point>& src) {
        CZRB_List<CZRB_Int32Point>::operator=(src);
        return *this;
    }
};

// A vector of CZRB_DoublePoint.
class LZRB_API CZRB_DoublePointVector : public CZRB_Vector<CZRB_DoublePoint> {
public:
    // Empty vector.
    CZRB_DoublePointVector() {}
    // n origin points; throws 9 when n is 0.
    explicit CZRB_DoublePointVector(unsigned int n) : CZRB_Vector<CZRB_DoublePoint>(n) {}
    // n copies of value; throws 9 when n is 0.
    CZRB_DoublePointVector(unsigned int n, const CZRB_DoublePoint& value)
        : CZRB_Vector<CZRB_DoublePoint>(n, value) {}
    // A copy of items[0..n-1]; throws 9 when n is 0.
    CZRB_DoublePointVector(CZRB_DoublePoint* items, unsigned int n)
        : CZRB_Vector<CZRB_DoublePoint>(items, n) {}
    // Copy of src.
    CZRB_DoublePointVector(const CZRB_DoublePointVector& src)
        : CZRB_Vector<CZRB_DoublePoint>(src) {}
    // Frees the elements.
    ~CZRB_DoublePointVector() override;
    // Assignment from a list, as the base does.
    using CZRB_Vector<CZRB_DoublePoint>::operator=;
    // Copy of src through the base's copy.
    CZRB_DoublePointVector& operator=(const CZRB_DoublePointVector& src) {
        CZRB_Vector<CZRB_DoublePoint>::operator=(src);
        return *this;
    }
    // Copy of the base vector src through the base's copy.
    CZRB_DoublePointVector& operator=(const CZRB_Vector<CZRB_DoublePoint>& src) {
        CZRB_Vector<CZRB_DoublePoint>::operator=(src);
        return *this;
    }
};

// A list of CZRB_DoublePoint.
class LZRB_API CZRB_DoublePointList : public CZRB_List<CZRB_DoublePoint> {
public:
    // Empty list.
    CZRB_DoublePointList() {}
    // n items holding value, cursor on the first; n = 0 gives an empty list.
    CZRB_DoublePointList(unsigned int n, const CZRB_DoublePoint& value)
        : CZRB_List<CZRB_DoublePoint>(n, value) {}
    // items[0..n-1], cursor on the first; throws 9 when n is 0.
    CZRB_DoublePointList(CZRB_DoublePoint* items, unsigned int n)
        : CZRB_List<CZRB_DoublePoint>(items, n) {}
    // Copy of src.
    CZRB_DoublePointList(const CZRB_DoublePointList& src) : CZRB_List<CZRB_DoublePoint>(src) {}
    // Frees every node.
    ~CZRB_DoublePointList() override;
    // Assignment from a vector, as the base does.
    using CZRB_List<CZRB_DoublePoint>::operator=;
    // Copy of src through the base's copy (an empty src changes nothing).
    CZRB_DoublePointList& operator=(const CZRB_DoublePointList& src) {
        CZRB_List<CZRB_DoublePoint>::operator=(src);
        return *this;
    }
    // Copy of the base list src through the base's copy (an empty src changes nothing).
    CZRB_DoublePointList& operator=(const CZRB_List<CZRB_DoublePoint>& src) {
        CZRB_List<CZRB_DoublePoint>::operator=(src);
        return *this;
    }
};

#endif
