/// @file
/// CZRB_OrderedList<T>: a CZRB_List of an arithmetic type with its natural ordering.
#ifndef CZRB_ORDEREDLIST_H
#define CZRB_ORDEREDLIST_H

#include "CZRB_List.h"
#include "CZRB_OrderedVector.h"

/// A CZRB_List of an arithmetic type with its natural ordering.
///
/// Adds the comparison of the element type (shared with CZRB_OrderedVector), a one-argument
/// Sort and the smallest and largest item; it adds no data. The named arithmetic lists
/// (CZRB_Int32List, ...) derive from it.
template <class T>
class CZRB_OrderedList : public CZRB_List<T> {
public:
    /// Empty list.
    CZRB_OrderedList() {}
    /// items[0..n-1], cursor on the first; throws 9 when n is 0.
    CZRB_OrderedList(T* items, unsigned int n) : CZRB_List<T>(items, n) {}
    /// n items holding value, cursor on the first; n = 0 gives an empty list.
    CZRB_OrderedList(unsigned int n, const T& value) : CZRB_List<T>(n, value) {}
    /// The same for a count of any integer type (a literal 0 count is not read as an array).
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>
    CZRB_OrderedList(N n, const T& value) : CZRB_List<T>(static_cast<unsigned int>(n), value) {}
    /// Copy of src (cursor on the head).
    CZRB_OrderedList(const CZRB_OrderedList& src) : CZRB_List<T>(src) {}
    /// Frees every node.
    virtual ~CZRB_OrderedList() {}

    /// Assignment from a plain list or a vector, as the base does.
    using CZRB_List<T>::operator=;
    /// Copy of src through the base's copy (an empty src changes nothing, as in the base).
    CZRB_OrderedList& operator=(const CZRB_OrderedList& src);

    /// The base's Sort with a comparison function stays available.
    using CZRB_List<T>::Sort;
    /// Stable Sort(Compare, ascending) of the base: non-zero ascending puts the smallest
    /// first, zero the largest.
    CZRB_OrderedList& Sort(unsigned char ascending);
    /// The smallest item, scanned from the head without moving the cursor; ties keep the
    /// earliest, a NaN is never chosen over the candidate. An empty list throws 5.
    T& Min();
    /// The largest item, with the rules of Min.
    T& Max();

protected:
    /// 1 when a > b, 0 when equal, -1 when a < b; a comparison with a NaN yields 0.
    static signed char Compare(const T& a, const T& b) {
        return CZRB_OrderedVector<T>::Compare(a, b);
    }

    /// The item chosen by Min (wantLarger false) or Max (true).
    T& ExtremeFunction(bool wantLarger);
};

template <class T>
CZRB_OrderedList<T>& CZRB_OrderedList<T>::operator=(const CZRB_OrderedList& src) {
    CZRB_List<T>::operator=(src);
    return *this;
}

template <class T>
CZRB_OrderedList<T>& CZRB_OrderedList<T>::Sort(unsigned char ascending) {
    CZRB_List<T>::Sort(Compare, ascending);
    return *this;
}

template <class T>
T& CZRB_OrderedList<T>::ExtremeFunction(bool wantLarger) {
    typename CZRB_List<T>::CNode* best = this->m_pHead;
    if (best == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    typename CZRB_List<T>::CNode* node = best->next;
    for (unsigned int k = 1; k < this->m_nLength && node != nullptr; ++k, node = node->next) {
        if (wantLarger ? node->item > best->item : node->item < best->item) {
            best = node;
        }
    }
    return best->item;
}

template <class T>
T& CZRB_OrderedList<T>::Min() {
    return ExtremeFunction(false);
}

template <class T>
T& CZRB_OrderedList<T>::Max() {
    return ExtremeFunction(true);
}

extern template class LZRB_API CZRB_OrderedList<signed char>;
extern template class LZRB_API CZRB_OrderedList<unsigned char>;
extern template class LZRB_API CZRB_OrderedList<short>;
extern template class LZRB_API CZRB_OrderedList<unsigned short>;
extern template class LZRB_API CZRB_OrderedList<int>;
extern template class LZRB_API CZRB_OrderedList<unsigned int>;
extern template class LZRB_API CZRB_OrderedList<__int64>;
extern template class LZRB_API CZRB_OrderedList<unsigned __int64>;
extern template class LZRB_API CZRB_OrderedList<float>;
extern template class LZRB_API CZRB_OrderedList<double>;

#endif
