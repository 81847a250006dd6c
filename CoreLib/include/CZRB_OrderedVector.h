/// @file
/// CZRB_OrderedVector<T>: a CZRB_Vector of an arithmetic type with its natural ordering.
#ifndef CZRB_ORDEREDVECTOR_H
#define CZRB_ORDEREDVECTOR_H

#include "CZRB_Vector.h"

template <class T>
class CZRB_OrderedList;

/// A CZRB_Vector of an arithmetic type with its natural ordering.
///
/// Adds the comparison of the element type, a one-argument Sort and the smallest and largest
/// item; it adds no data. The named arithmetic vectors (CZRB_Int32Vector, ...) derive from it.
template <class T>
class CZRB_OrderedVector : public CZRB_Vector<T> {
public:
    /// Empty vector.
    CZRB_OrderedVector() {}
    /// n elements; throws 9 when n is 0.
    explicit CZRB_OrderedVector(unsigned int n) : CZRB_Vector<T>(n) {}
    /// A copy of items[0..n-1]; throws 9 when n is 0.
    CZRB_OrderedVector(T* items, unsigned int n) : CZRB_Vector<T>(items, n) {}
    /// n copies of value; throws 9 when n is 0.
    CZRB_OrderedVector(unsigned int n, const T& value) : CZRB_Vector<T>(n, value) {}
    /// The same for a count of any integer type (a literal 0 count is not read as an array).
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>
    CZRB_OrderedVector(N n, const T& value) : CZRB_Vector<T>(static_cast<unsigned int>(n), value) {}
    /// Copy of src.
    CZRB_OrderedVector(const CZRB_OrderedVector& src) : CZRB_Vector<T>(src) {}
    /// Frees the block.
    virtual ~CZRB_OrderedVector() {}

    /// Assignment from a plain vector or a list, as the base does.
    using CZRB_Vector<T>::operator=;
    /// Copy of src through the base's copy.
    CZRB_OrderedVector& operator=(const CZRB_OrderedVector& src);

    /// The base's Sort with a comparison function stays available.
    using CZRB_Vector<T>::Sort;
    /// Sort(Compare, ascending) of the base: non-zero ascending puts the smallest first, zero
    /// the largest; equal elements keep their order. An empty vector throws 2.
    CZRB_OrderedVector& Sort(unsigned char ascending);
    /// The smallest element; ties keep the earliest, a NaN is never chosen over the candidate
    /// (one in position 0 stays the result). An empty vector throws 5 (object = this).
    T& Min();
    /// The largest element, with the rules of Min.
    T& Max();

protected:
    /// 1 when a > b, 0 when equal, -1 when a < b; a comparison with a NaN yields 0.
    static signed char Compare(const T& a, const T& b);

    /// The element chosen by Min (wantLarger false) or Max (true).
    T& ExtremeFunction(bool wantLarger);

    template <class U>
    friend class CZRB_OrderedList;
};

template <class T>
CZRB_OrderedVector<T>& CZRB_OrderedVector<T>::operator=(const CZRB_OrderedVector& src) {
    CZRB_Vector<T>::operator=(src);
    return *this;
}

template <class T>
signed char CZRB_OrderedVector<T>::Compare(const T& a, const T& b) {
    if (a > b) {
        return 1;
    }
    if (a < b) {
        return -1;
    }
    return 0;
}

template <class T>
CZRB_OrderedVector<T>& CZRB_OrderedVector<T>::Sort(unsigned char ascending) {
    CZRB_Vector<T>::Sort(Compare, ascending);
    return *this;
}

template <class T>
T& CZRB_OrderedVector<T>::ExtremeFunction(bool wantLarger) {
    if (this->m_nLength == 0) {
        throw CZRB_Exception(5, this, 0);
    }
    unsigned int best = 0;
    for (unsigned int i = 1; i < this->m_nLength; ++i) {
        const T& item = this->m_pItems[i];
        if (wantLarger ? item > this->m_pItems[best] : item < this->m_pItems[best]) {
            best = i;
        }
    }
    return this->m_pItems[best];
}

template <class T>
T& CZRB_OrderedVector<T>::Min() {
    return ExtremeFunction(false);
}

template <class T>
T& CZRB_OrderedVector<T>::Max() {
    return ExtremeFunction(true);
}

extern template class LZRB_API CZRB_OrderedVector<signed char>;
extern template class LZRB_API CZRB_OrderedVector<unsigned char>;
extern template class LZRB_API CZRB_OrderedVector<short>;
extern template class LZRB_API CZRB_OrderedVector<unsigned short>;
extern template class LZRB_API CZRB_OrderedVector<int>;
extern template class LZRB_API CZRB_OrderedVector<unsigned int>;
extern template class LZRB_API CZRB_OrderedVector<__int64>;
extern template class LZRB_API CZRB_OrderedVector<unsigned __int64>;
extern template class LZRB_API CZRB_OrderedVector<float>;
extern template class LZRB_API CZRB_OrderedVector<double>;

#endif
