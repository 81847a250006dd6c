/// @file
/// CZRB_Rect<T>: an axis-aligned rectangle given by its four edges, with the named classes
/// CZRB_Int32Rect and CZRB_DoubleRect and their vectors and lists.
#ifndef CZRB_RECT_H
#define CZRB_RECT_H

#include "CZRB_Point.h"
#include "CZRB_Size.h"

/// An axis-aligned rectangle given by its four edges.
///
/// Edges, not pixels: the width is right - left with no +1, and a rectangle may be empty or
/// inverted; nothing normalises it. The y axis grows downwards by naming only.
template <class T>
class CZRB_Rect : public CZRB_Object {
public:
    /// The all-zero rectangle (0, 0, 0, 0).
    CZRB_Rect() : m_left(0), m_top(0), m_right(0), m_bottom(0) {}
    /// The rectangle with the given edges, taken as they are.
    CZRB_Rect(T left, T top, T right, T bottom)
        : m_left(left), m_top(top), m_right(right), m_bottom(bottom) {}
    /// The rectangle from its top-left to its bottom-right corner.
    CZRB_Rect(const CZRB_Point<T>& topLeft, const CZRB_Point<T>& bottomRight) {
        Set(topLeft, bottomRight);
    }
    /// The rectangle at topLeft with the given size (right = left + width, bottom = top +
    /// height).
    CZRB_Rect(const CZRB_Point<T>& topLeft, const CZRB_Size<T>& size) { Set(topLeft, size); }
    /// Copies the four edges.
    CZRB_Rect(const CZRB_Rect& other) : CZRB_Object(other) { DataCopy(other); }
    /// Copies the four edges and returns this rectangle.
    CZRB_Rect& operator=(const CZRB_Rect& other) {
        DataCopy(other);
        return *this;
    }
    /// Nothing to free.
    ~CZRB_Rect() override {}

    /// Sets the four edges; returns this rectangle.
    CZRB_Rect& Set(T left, T top, T right, T bottom) {
        m_left = left;
        m_top = top;
        m_right = right;
        m_bottom = bottom;
        return *this;
    }
    /// Sets the edges from two corners; returns this rectangle.
    CZRB_Rect& Set(const CZRB_Point<T>& topLeft, const CZRB_Point<T>& bottomRight) {
        return Set(topLeft.GetX(), topLeft.GetY(), bottomRight.GetX(), bottomRight.GetY());
    }
    /// Sets the edges from the top-left corner and a size; returns this rectangle.
    CZRB_Rect& Set(const CZRB_Point<T>& topLeft, const CZRB_Size<T>& size) {
        m_left = topLeft.GetX();
        m_top = topLeft.GetY();
        return SetSize(size);
    }

    /// The left edge.
    T GetLeft() const { return m_left; }
    /// The top edge.
    T GetTop() const { return m_top; }
    /// The right edge.
    T GetRight() const { return m_right; }
    /// The bottom edge.
    T GetBottom() const { return m_bottom; }
    /// Changes the left edge only; returns this rectangle.
    CZRB_Rect& SetLeft(T left) {
        m_left = left;
        return *this;
    }
    /// Changes the top edge only; returns this rectangle.
    CZRB_Rect& SetTop(T top) {
        m_top = top;
        return *this;
    }
    /// Changes the right edge only; returns this rectangle.
    CZRB_Rect& SetRight(T right) {
        m_right = right;
        return *this;
    }
    /// Changes the bottom edge only; returns this rectangle.
    CZRB_Rect& SetBottom(T bottom) {
        m_bottom = bottom;
        return *this;
    }

    /// The corner (left, top).
    CZRB_Point<T> GetTopLeft() const { return CZRB_Point<T>(m_left, m_top); }
    /// The corner (right, top).
    CZRB_Point<T> GetTopRight() const { return CZRB_Point<T>(m_right, m_top); }
    /// The corner (left, bottom).
    CZRB_Point<T> GetBottomLeft() const { return CZRB_Point<T>(m_left, m_bottom); }
    /// The corner (right, bottom).
    CZRB_Point<T> GetBottomRight() const { return CZRB_Point<T>(m_right, m_bottom); }
    /// Sets the right and top edges; returns this rectangle.
    CZRB_Rect& SetTopRight(const CZRB_Point<T>& corner) {
        m_right = corner.GetX();
        m_top = corner.GetY();
        return *this;
    }
    /// Sets the left and bottom edges; returns this rectangle.
    CZRB_Rect& SetBottomLeft(const CZRB_Point<T>& corner) {
        m_left = corner.GetX();
        m_bottom = corner.GetY();
        return *this;
    }
    /// Sets the right and bottom edges; returns this rectangle.
    CZRB_Rect& SetBottomRight(const CZRB_Point<T>& corner) {
        m_right = corner.GetX();
        m_bottom = corner.GetY();
        return *this;
    }

    /// right - left, with no +1; negative for an inverted rectangle (integers wrap).
    T GetWidth() const { return ZRB::GeometryArith::Sub(m_right, m_left); }
    /// bottom - top, with no +1; negative for an inverted rectangle (integers wrap).
    T GetHeight() const { return ZRB::GeometryArith::Sub(m_bottom, m_top); }
    /// right = left + width; returns this rectangle.
    CZRB_Rect& SetWidth(T width) {
        m_right = ZRB::GeometryArith::Add(m_left, width);
        return *this;
    }
    /// bottom = top + height; returns this rectangle.
    CZRB_Rect& SetHeight(T height) {
        m_bottom = ZRB::GeometryArith::Add(m_top, height);
        return *this;
    }
    /// SetWidth and SetHeight from `size`; returns this rectangle.
    CZRB_Rect& SetSize(const CZRB_Size<T>& size) {
        SetWidth(size.GetWidth());
        return SetHeight(size.GetHeight());
    }

    /// ((left + right) / 2, (top + bottom) / 2): integers truncate toward zero, doubles
    /// multiply by 0.5.
    CZRB_Point<T> GetCenter() const {
        return CZRB_Point<T>(ZRB::GeometryArith::Half(ZRB::GeometryArith::Add(m_left, m_right)),
                             ZRB::GeometryArith::Half(ZRB::GeometryArith::Add(m_top, m_bottom)));
    }

    /// Adds dx to left and right and dy to top and bottom; returns this rectangle.
    CZRB_Rect& Translate(T dx, T dy) {
        TranslateX(dx);
        return TranslateY(dy);
    }
    /// Adds dx to left and right; returns this rectangle.
    CZRB_Rect& TranslateX(T dx) {
        m_left = ZRB::GeometryArith::Add(m_left, dx);
        m_right = ZRB::GeometryArith::Add(m_right, dx);
        return *this;
    }
    /// Adds dy to top and bottom; returns this rectangle.
    CZRB_Rect& TranslateY(T dy) {
        m_top = ZRB::GeometryArith::Add(m_top, dy);
        m_bottom = ZRB::GeometryArith::Add(m_bottom, dy);
        return *this;
    }
    /// Puts the top-left corner at (x, y), keeping width and height; returns this rectangle.
    CZRB_Rect& MoveTo(T x, T y) {
        const T width = GetWidth();
        const T height = GetHeight();
        m_left = x;
        m_top = y;
        SetWidth(width);
        return SetHeight(height);
    }
    /// Puts the top-left corner at `corner`, keeping width and height; returns this rectangle.
    CZRB_Rect& MoveTo(const CZRB_Point<T>& corner) { return MoveTo(corner.GetX(), corner.GetY()); }

    /// Grows the rectangle: right += width, bottom += height; the top-left corner stays.
    CZRB_Rect& operator+=(const CZRB_Size<T>& size) {
        m_right = ZRB::GeometryArith::Add(m_right, size.GetWidth());
        m_bottom = ZRB::GeometryArith::Add(m_bottom, size.GetHeight());
        return *this;
    }
    /// The rectangle grown as by operator+=, as a new rectangle.
    CZRB_Rect operator+(const CZRB_Size<T>& size) const {
        CZRB_Rect result(*this);
        result += size;
        return result;
    }

    /// This rectangle becomes the union and is returned: smallest left and top, largest right
    /// and bottom; the all-zero rectangle when that result is inverted. Empty rectangles are
    /// not skipped (by design: merging with (0, 0, 0, 0) stretches the result to the origin).
    CZRB_Rect& Merge(const CZRB_Rect& other) { return *this = Union(other); }
    /// The union as a new rectangle; this one is unchanged.
    CZRB_Rect operator|(const CZRB_Rect& other) const { return Union(other); }
    /// Same as Merge(other).
    CZRB_Rect& operator|=(const CZRB_Rect& other) { return Merge(other); }

    /// This rectangle becomes the intersection and is returned: largest left and top, smallest
    /// right and bottom; the all-zero rectangle when that result is inverted. Touching
    /// rectangles give a zero width or height.
    CZRB_Rect& Intersect(const CZRB_Rect& other) { return *this = Intersection(other); }
    /// The intersection as a new rectangle; this one is unchanged.
    CZRB_Rect operator&(const CZRB_Rect& other) const { return Intersection(other); }
    /// Same as Intersect(other).
    CZRB_Rect& operator&=(const CZRB_Rect& other) { return Intersect(other); }

    /// 1 when left equals right or top equals bottom (exact; a NaN edge is never equal).
    unsigned char IsNull() const { return (m_left == m_right || m_top == m_bottom) ? 1 : 0; }
    /// 1 when left <= right and top <= bottom.
    unsigned char IsValid() const { return (m_left <= m_right && m_top <= m_bottom) ? 1 : 0; }

    /// 1 when both vertical edges of `other` pass the x test and both horizontal edges the y
    /// test (edges included when `inclusive` is non-zero). Never true on an inverted
    /// rectangle; with inclusive 0 a rectangle is not inside itself.
    unsigned char IsInside(const CZRB_Rect& other, unsigned char inclusive) const {
        return (IsInsideX(other.m_left, inclusive) && IsInsideX(other.m_right, inclusive) &&
                IsInsideY(other.m_top, inclusive) && IsInsideY(other.m_bottom, inclusive))
                   ? 1
                   : 0;
    }
    /// IsInside(point.x, point.y, inclusive).
    unsigned char IsInside(const CZRB_Point<T>& point, unsigned char inclusive) const {
        return IsInside(point.GetX(), point.GetY(), inclusive);
    }
    /// 1 when l <= x <= r and t <= y <= b (inclusive non-zero), or l < x < r and t < y < b.
    unsigned char IsInside(T x, T y, unsigned char inclusive) const {
        return (IsInsideX(x, inclusive) && IsInsideY(y, inclusive)) ? 1 : 0;
    }

    /// 1 when all four edges are exactly equal, else 0.
    unsigned char operator==(const CZRB_Rect& other) const {
        return (m_left == other.m_left && m_top == other.m_top && m_right == other.m_right &&
                m_bottom == other.m_bottom)
                   ? 1
                   : 0;
    }
    /// Negation of operator==.
    unsigned char operator!=(const CZRB_Rect& other) const { return *this == other ? 0 : 1; }

protected:
    /// Copies the four edges from `other`.
    void DataCopy(const CZRB_Rect& other) {
        m_left = other.m_left;
        m_top = other.m_top;
        m_right = other.m_right;
        m_bottom = other.m_bottom;
    }

    T m_left;   ///< the left edge
    T m_top;    ///< the top edge
    T m_right;  ///< the right edge
    T m_bottom; ///< the bottom edge

private:
    CZRB_Rect Union(const CZRB_Rect& other) const {
        using namespace ZRB::GeometryArith;
        return ValidOrZero(CZRB_Rect(Min(m_left, other.m_left), Min(m_top, other.m_top),
                                     Max(m_right, other.m_right), Max(m_bottom, other.m_bottom)));
    }
    CZRB_Rect Intersection(const CZRB_Rect& other) const {
        using namespace ZRB::GeometryArith;
        return ValidOrZero(CZRB_Rect(Max(m_left, other.m_left), Max(m_top, other.m_top),
                                     Min(m_right, other.m_right), Min(m_bottom, other.m_bottom)));
    }

    /// `candidate` when left <= right and top <= bottom, else the all-zero rectangle.
    static CZRB_Rect ValidOrZero(const CZRB_Rect& candidate) {
        return candidate.IsValid() ? candidate : CZRB_Rect();
    }
    /// The x test of IsInside against the left and right edges.
    bool IsInsideX(T x, unsigned char inclusive) const {
        return inclusive ? (m_left <= x && x <= m_right) : (m_left < x && x < m_right);
    }
    /// The y test of IsInside against the top and bottom edges.
    bool IsInsideY(T y, unsigned char inclusive) const {
        return inclusive ? (m_top <= y && y <= m_bottom) : (m_top < y && y < m_bottom);
    }
};

extern template class LZRB_API CZRB_Rect<int>;
extern template class LZRB_API CZRB_Rect<double>;

/// The named rectangle class of int edges.
class LZRB_API CZRB_Int32Rect : public CZRB_Rect<int> {
    LZRB_NAMED_GEOMETRY_MEMBERS(CZRB_Int32Rect, CZRB_Rect, int)
};

/// The named rectangle class of double edges.
class LZRB_API CZRB_DoubleRect : public CZRB_Rect<double> {
    LZRB_NAMED_GEOMETRY_MEMBERS(CZRB_DoubleRect, CZRB_Rect, double)
};

extern template class LZRB_API CZRB_Vector<CZRB_Int32Rect>;
extern template class LZRB_API CZRB_List<CZRB_Int32Rect>;
extern template class LZRB_API CZRB_Vector<CZRB_DoubleRect>;
extern template class LZRB_API CZRB_List<CZRB_DoubleRect>;

/// A vector of CZRB_Int32Rect (default elements: all-zero rectangles).
class LZRB_API CZRB_Int32RectVector : public CZRB_Vector<CZRB_Int32Rect> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int32RectVector, CZRB_Vector<CZRB_Int32Rect>, CZRB_Int32Rect)
};

/// A list of CZRB_Int32Rect.
class LZRB_API CZRB_Int32RectList : public CZRB_List<CZRB_Int32Rect> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int32RectList, CZRB_List<CZRB_Int32Rect>, CZRB_Int32Rect)
};

/// A vector of CZRB_DoubleRect (default elements: all-zero rectangles).
class LZRB_API CZRB_DoubleRectVector : public CZRB_Vector<CZRB_DoubleRect> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_DoubleRectVector, CZRB_Vector<CZRB_DoubleRect>, CZRB_DoubleRect)
};

/// A list of CZRB_DoubleRect.
class LZRB_API CZRB_DoubleRectList : public CZRB_List<CZRB_DoubleRect> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_DoubleRectList, CZRB_List<CZRB_DoubleRect>, CZRB_DoubleRect)
};

#endif
