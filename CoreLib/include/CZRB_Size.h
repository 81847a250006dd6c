/// @file
/// CZRB_Size<T>: an extent (width, height), with the named classes CZRB_Int32Size and
/// CZRB_DoubleSize and the vector and list of CZRB_Int32Size (there is none of
/// CZRB_DoubleSize).
#ifndef CZRB_SIZE_H
#define CZRB_SIZE_H

#include "CZRB_Point.h"

/// An extent (width, height).
template <class T>
class CZRB_Size : public CZRB_Object {
public:
    /// The empty extent (0, 0).
    CZRB_Size() : m_width(0), m_height(0) {}
    /// The extent (width, height).
    CZRB_Size(const T& width, const T& height) : m_width(width), m_height(height) {}
    /// Copies both values.
    CZRB_Size(const CZRB_Size& other) : CZRB_Object(other) { DataCopy(other); }
    /// Copies both values and returns this size.
    CZRB_Size& operator=(const CZRB_Size& other) {
        DataCopy(other);
        return *this;
    }
    /// Nothing to free.
    ~CZRB_Size() override {}

    /// Sets both values; returns this size.
    CZRB_Size& Set(const T& width, const T& height) {
        m_width = width;
        m_height = height;
        return *this;
    }
    /// Sets the width only; returns this size.
    CZRB_Size& SetWidth(const T& width) {
        m_width = width;
        return *this;
    }
    /// Sets the height only; returns this size.
    CZRB_Size& SetHeight(const T& height) {
        m_height = height;
        return *this;
    }
    /// The width.
    T GetWidth() const { return m_width; }
    /// The height.
    T GetHeight() const { return m_height; }

    /// Adds `other` component-wise (integers wrap).
    void operator+=(const CZRB_Size& other) {
        m_width = ZRB::GeometryArith::Add(m_width, other.m_width);
        m_height = ZRB::GeometryArith::Add(m_height, other.m_height);
    }
    /// Subtracts `other` component-wise (integers wrap).
    void operator-=(const CZRB_Size& other) {
        m_width = ZRB::GeometryArith::Sub(m_width, other.m_width);
        m_height = ZRB::GeometryArith::Sub(m_height, other.m_height);
    }
    /// The component-wise sum as a new size.
    CZRB_Size operator+(const CZRB_Size& other) const {
        CZRB_Size result(*this);
        result += other;
        return result;
    }
    /// The component-wise difference as a new size.
    CZRB_Size operator-(const CZRB_Size& other) const {
        CZRB_Size result(*this);
        result -= other;
        return result;
    }
    /// 1 when both values are exactly equal, else 0.
    unsigned char operator==(const CZRB_Size& other) const {
        return (m_width == other.m_width && m_height == other.m_height) ? 1 : 0;
    }
    /// Negation of operator==.
    unsigned char operator!=(const CZRB_Size& other) const { return *this == other ? 0 : 1; }

protected:
    /// Copies both values from `other`.
    void DataCopy(const CZRB_Size& other) {
        m_width = other.m_width;
        m_height = other.m_height;
    }

    T m_width;  ///< the width
    T m_height; ///< the height
};

extern template class LZRB_API CZRB_Size<int>;
extern template class LZRB_API CZRB_Size<double>;

/// The named size class of int extents.
class LZRB_API CZRB_Int32Size : public CZRB_Size<int> {
    LZRB_NAMED_GEOMETRY_MEMBERS(CZRB_Int32Size, CZRB_Size, int)
};

/// The named size class of double extents.
class LZRB_API CZRB_DoubleSize : public CZRB_Size<double> {
    LZRB_NAMED_GEOMETRY_MEMBERS(CZRB_DoubleSize, CZRB_Size, double)
};

extern template class LZRB_API CZRB_Vector<CZRB_Int32Size>;
extern template class LZRB_API CZRB_List<CZRB_Int32Size>;

/// A vector of CZRB_Int32Size (default elements: empty sizes).
class LZRB_API CZRB_Int32SizeVector : public CZRB_Vector<CZRB_Int32Size> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_Int32SizeVector, CZRB_Vector<CZRB_Int32Size>, CZRB_Int32Size)
};

/// A list of CZRB_Int32Size.
class LZRB_API CZRB_Int32SizeList : public CZRB_List<CZRB_Int32Size> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_Int32SizeList, CZRB_List<CZRB_Int32Size>, CZRB_Int32Size)
};

#endif
