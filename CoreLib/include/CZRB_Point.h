/// @file
/// CZRB_Point<T>: a position (x, y) in the plane, with the named classes CZRB_Int32Point and
/// CZRB_DoublePoint and their vectors and lists.
#ifndef CZRB_POINT_H
#define CZRB_POINT_H

#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

#include <type_traits>

namespace ZRB {
/// Integer arithmetic of the geometry templates wraps in two's complement (computed through
/// the unsigned type), so no coordinate sum or difference can overflow.
namespace GeometryArith {

/// a + b; signed integers wrap in two's complement instead of overflowing.
template <class T>
inline T Add(const T& a, const T& b) {
    if constexpr (std::is_integral<T>::value && std::is_signed<T>::value) {
        using U = typename std::make_unsigned<T>::type;
        return static_cast<T>(static_cast<U>(static_cast<U>(a) + static_cast<U>(b)));
    } else {
        return static_cast<T>(a + b);
    }
}

/// a - b; signed integers wrap in two's complement instead of overflowing.
template <class T>
inline T Sub(const T& a, const T& b) {
    if constexpr (std::is_integral<T>::value && std::is_signed<T>::value) {
        using U = typename std::make_unsigned<T>::type;
        return static_cast<T>(static_cast<U>(static_cast<U>(a) - static_cast<U>(b)));
    } else {
        return static_cast<T>(a - b);
    }
}

/// Half of a: integers divide by 2 truncating toward zero, floating point multiplies by 0.5.
template <class T>
inline T Half(const T& a) {
    if constexpr (std::is_integral<T>::value) {
        return static_cast<T>(a / 2);
    } else {
        return static_cast<T>(a * 0.5);
    }
}

/// The smaller of a and b; a when neither is smaller.
template <class T>
inline const T& Min(const T& a, const T& b) {
    return b < a ? b : a;
}

/// The larger of a and b; a when neither is larger.
template <class T>
inline const T& Max(const T& a, const T& b) {
    return a < b ? b : a;
}

} // namespace GeometryArith
} // namespace ZRB

/// The members the named geometry classes (CZRB_Int32Point, CZRB_DoubleSize, CZRB_Int32Rect,
/// ...) share over their base Template<Type>: its value constructors, construction (zero, copy,
/// from the template type), copy assignment through DataCopy and the destructor, which the
/// library source defines.
#define LZRB_NAMED_GEOMETRY_MEMBERS(Name, Template, Type)                                          \
public:                                                                                            \
    /*! The template's value constructors (coordinates, extent, edges or corners). */              \
    using Template<Type>::Template;                                                                \
    /*! Every value 0. */                                                                          \
    Name() {}                                                                                      \
    /*! Copies every value. */                                                                     \
    Name(const Name& other) : Template<Type>(other) {}                                             \
    /*! Copies every value of an object of the template type. */                                   \
    Name(const Template<Type>& other) : Template<Type>(other) {}                                   \
    /*! Copies every value and returns this object. */                                             \
    Name& operator=(const Name& other) {                                                           \
        DataCopy(other);                                                                           \
        return *this;                                                                              \
    }                                                                                              \
    /*! Nothing to free. */                                                                        \
    ~Name() override;

/// A position (x, y) in the plane.
template <class T>
class CZRB_Point : public CZRB_Object {
public:
    /// The origin (0, 0).
    CZRB_Point() : m_x(0), m_y(0) {}
    /// The point (x, y).
    CZRB_Point(const T& x, const T& y) : m_x(x), m_y(y) {}
    /// Copies both coordinates.
    CZRB_Point(const CZRB_Point& other) : CZRB_Object(other) { DataCopy(other); }
    /// Copies both coordinates and returns this point.
    CZRB_Point& operator=(const CZRB_Point& other) {
        DataCopy(other);
        return *this;
    }
    /// Nothing to free.
    ~CZRB_Point() override {}

    /// Sets both coordinates; returns this point.
    CZRB_Point& Set(const T& x, const T& y) {
        m_x = x;
        m_y = y;
        return *this;
    }
    /// Sets x only; returns this point.
    CZRB_Point& SetX(const T& x) {
        m_x = x;
        return *this;
    }
    /// Sets y only; returns this point.
    CZRB_Point& SetY(const T& y) {
        m_y = y;
        return *this;
    }
    /// The x coordinate.
    T GetX() const { return m_x; }
    /// The y coordinate.
    T GetY() const { return m_y; }

    /// Adds `other` component-wise (integers wrap).
    void operator+=(const CZRB_Point& other) {
        m_x = ZRB::GeometryArith::Add(m_x, other.m_x);
        m_y = ZRB::GeometryArith::Add(m_y, other.m_y);
    }
    /// Subtracts `other` component-wise (integers wrap).
    void operator-=(const CZRB_Point& other) {
        m_x = ZRB::GeometryArith::Sub(m_x, other.m_x);
        m_y = ZRB::GeometryArith::Sub(m_y, other.m_y);
    }
    /// The component-wise sum as a new point.
    CZRB_Point operator+(const CZRB_Point& other) const {
        CZRB_Point result(*this);
        result += other;
        return result;
    }
    /// The component-wise difference as a new point.
    CZRB_Point operator-(const CZRB_Point& other) const {
        CZRB_Point result(*this);
        result -= other;
        return result;
    }
    /// 1 when both coordinates are exactly equal, else 0.
    unsigned char operator==(const CZRB_Point& other) const {
        return (m_x == other.m_x && m_y == other.m_y) ? 1 : 0;
    }
    /// Negation of operator==.
    unsigned char operator!=(const CZRB_Point& other) const { return *this == other ? 0 : 1; }

protected:
    /// Copies both coordinates from `other`.
    void DataCopy(const CZRB_Point& other) {
        m_x = other.m_x;
        m_y = other.m_y;
    }

    T m_x; ///< the x coordinate
    T m_y; ///< the y coordinate
};

extern template class LZRB_API CZRB_Point<int>;
extern template class LZRB_API CZRB_Point<double>;

/// The named point class of int coordinates.
class LZRB_API CZRB_Int32Point : public CZRB_Point<int> {
    LZRB_NAMED_GEOMETRY_MEMBERS(CZRB_Int32Point, CZRB_Point, int)
};

/// The named point class of double coordinates.
class LZRB_API CZRB_DoublePoint : public CZRB_Point<double> {
    LZRB_NAMED_GEOMETRY_MEMBERS(CZRB_DoublePoint, CZRB_Point, double)
};

extern template class LZRB_API CZRB_Vector<CZRB_Int32Point>;
extern template class LZRB_API CZRB_List<CZRB_Int32Point>;
extern template class LZRB_API CZRB_Vector<CZRB_DoublePoint>;
extern template class LZRB_API CZRB_List<CZRB_DoublePoint>;

/// A vector of CZRB_Int32Point (default elements: the origin).
class LZRB_API CZRB_Int32PointVector : public CZRB_Vector<CZRB_Int32Point> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int32PointVector, CZRB_Vector<CZRB_Int32Point>, CZRB_Int32Point)
};

/// A list of CZRB_Int32Point.
class LZRB_API CZRB_Int32PointList : public CZRB_List<CZRB_Int32Point> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int32PointList, CZRB_List<CZRB_Int32Point>, CZRB_Int32Point)
};

/// A vector of CZRB_DoublePoint (default elements: the origin).
class LZRB_API CZRB_DoublePointVector : public CZRB_Vector<CZRB_DoublePoint> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_DoublePointVector, CZRB_Vector<CZRB_DoublePoint>,
                              CZRB_DoublePoint)
};

/// A list of CZRB_DoublePoint.
class LZRB_API CZRB_DoublePointList : public CZRB_List<CZRB_DoublePoint> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_DoublePointList, CZRB_List<CZRB_DoublePoint>, CZRB_DoublePoint)
};

#endif
