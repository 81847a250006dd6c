/// @file
/// CZRB_Vector<T>: the library's array container.
#ifndef CZRB_VECTOR_H
#define CZRB_VECTOR_H

#include "CZRB_Exception.h"
#include "CZRB_Object.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

template <class T>
class CZRB_List;

/// The library's array container.
///
/// One contiguous block of elements; positions are 0-based. Failures throw CZRB_Exception
/// with code 2 (range), 5 (no item) or 9 (zero size).
///
/// Storage: the operations that set a size (Create, Recreate, assignment, Extract) allocate
/// exactly that many elements. The step-by-step paths (AppendItem, AppendVector, AppendList,
/// InsertItems and the grow flag of CopyItemsFrom and Fill) grow the block geometrically and
/// then use its spare room, so n appends cost O(n) in total; DeleteItems with shrink keeps the
/// block while the spare room stays below the elements. Spare room is raw memory: it never
/// holds an element. New elements are zero for arithmetic types and default-constructed
/// otherwise, then set by assignment, so any other element type needs a default constructor,
/// a copy constructor, assignment and operator==.
///
/// The library provides the instantiations for its ten arithmetic types (declared below as
/// extern templates); value classes declare theirs next to their own class.
template <class T>
class CZRB_Vector : public CZRB_Object {
public:
    /// @name Construction and storage
    /// @{

    /// Empty vector: no block, size 0.
    CZRB_Vector() : m_pItems(nullptr), m_nLength(0), m_nCapacity(0) {}
    /// Create(n): n elements; throws 9 when n is 0.
    explicit CZRB_Vector(unsigned int n);
    /// Create(items, n): a copy of items[0..n-1]; throws 9 when n is 0.
    CZRB_Vector(T* items, unsigned int n);
    /// Create(n, value): n copies of value; throws 9 when n is 0.
    CZRB_Vector(unsigned int n, const T& value);
    /// The same for a count of any integer type, so that a literal 0 count is not also read
    /// as a null array.
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>
    CZRB_Vector(N n, const T& value) : CZRB_Vector(static_cast<unsigned int>(n), value) {}
    /// Copy of src through DataCopy (an empty source gives an empty vector).
    CZRB_Vector(const CZRB_Vector& src);
    /// Frees the block (class elements are destroyed).
    virtual ~CZRB_Vector();

    /// Replaces the contents by n new elements; n = 0 throws 9 (object = this).
    void Create(unsigned int n);
    /// Replaces the contents by a copy of items[0..n-1]; n = 0 throws 9.
    void Create(T* items, unsigned int n);
    /// Replaces the contents by n copies of value; n = 0 throws 9.
    void Create(unsigned int n, const T& value);
    /// The same for a count of any integer type (a literal 0 count is not read as an array).
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>
    void Create(N n, const T& value) {
        Create(static_cast<unsigned int>(n), value);
    }
    /// Resizes to n keeping old[from + k] at k; on an empty vector it is Create(n) (so n = 0
    /// throws 9); a non-zero `from` drops the first `from` elements. Other positions are new.
    void Recreate(unsigned int n, unsigned int from);
    /// As Recreate(n, from), with every position that got no old element set to fill; on an
    /// empty vector it is Create(n, fill).
    void Recreate(unsigned int n, unsigned int from, const T& fill);
    /// Frees the block; the vector is empty afterwards.
    CZRB_Vector& DeleteAll();

    /// The element block (null when empty).
    T* GetBuf() const { return m_pItems; }
    /// The number of elements.
    unsigned int GetLength() const { return m_nLength; }
    /// The number of elements (an element count, not a truth value).
    unsigned int operator!() const { return m_nLength; }
    /// Element i; i not below the size throws 5 (object = this). No other accessor checks.
    T& operator[](unsigned int i) const;
    /// @}

    /// @name Assignment and copying
    /// @{

    /// Copy of src (nothing happens on self-assignment).
    CZRB_Vector& operator=(const CZRB_Vector& src);
    /// The list's items in order; the list's cursor is left on its last item.
    CZRB_Vector& operator=(CZRB_List<T>& src);
    /// Copies up to n elements this[from...] to dst[to...]; stops silently at the end of the
    /// vector and never throws.
    void CopyItemsTo(unsigned int to, T* dst, unsigned int from, unsigned int n);
    /// Copies src[from + k] to this[to + k], k < n. n = 0 does nothing; with grow non-zero
    /// the vector first grows to to + n; a destination end beyond the size throws 2 (object =
    /// this); a source running out throws 5 (object = &src), keeping what was copied.
    CZRB_Vector& CopyItemsFrom(unsigned int to, CZRB_Vector& src, unsigned int from, unsigned int n,
                               unsigned char grow);
    /// As above from a plain array, without a source check.
    CZRB_Vector& CopyItemsFrom(unsigned int to, T* src, unsigned int from, unsigned int n,
                               unsigned char grow);
    /// As above, reading the list from its cursor onward and moving the cursor on after each
    /// item; a list without cursor throws 5 (object = &src); the copy ends early after the
    /// list's last item (remaining destination positions keep their values).
    CZRB_Vector& CopyItemsFrom(unsigned int to, CZRB_List<T>& src, unsigned int n,
                               unsigned char grow);
    /// dst becomes n elements (n = 0 throws 9) holding this[from...] as far as available.
    void Extract(CZRB_Vector& dst, unsigned int from, unsigned int n);
    /// n elements with result[n-1-k] = this[from+k] while from + k is below the size: the
    /// available items reversed at the end of the result. n = 0 gives an empty vector.
    CZRB_Vector ExtractInvertVector(unsigned int from, unsigned int n);
    /// @}

    /// @name Growth and insertion
    /// @{

    /// Appends item (item may be one of the vector's own elements).
    void AppendItem(const T& item) {
        if constexpr (std::is_arithmetic_v<T>) {
            if (m_nLength < m_nCapacity) {
                m_pItems[m_nLength++] = item;
                return;
            }
            const T value = item; // keeps the caller's variable out of memory on the fast path
            ResizeFunction(m_nLength + 1, &value);
        } else {
            ResizeFunction(m_nLength + 1, &item);
        }
    }
    /// Appends item; the same operation as AppendItem.
    void operator+=(const T& item) { AppendItem(item); }
    /// Appends a copy of src's elements; an empty vector plus an empty vector throws 9.
    CZRB_Vector& AppendVector(CZRB_Vector& src);
    /// The same as AppendVector.
    CZRB_Vector& operator&=(CZRB_Vector& src);
    /// Appends the list's items read from its first item with Next(1) (cursor ends on the
    /// last item); an empty vector plus an empty list throws 9.
    CZRB_Vector& AppendList(CZRB_List<T>& src);
    /// The same as AppendList.
    CZRB_Vector& operator&=(CZRB_List<T>& src);
    /// Opens a gap of n at `at` without changing the size: this[i + n] = this[i] top down, the
    /// last n elements are lost and the gap keeps its old values. Throws 2 when at > size - 1
    /// in unsigned arithmetic (so an empty vector never throws here).
    void DownShift(unsigned int at, unsigned int n);
    /// Closes a gap: this[i - n] = this[i] for i = at + n .. size - 1; the size stays and the
    /// last n positions keep their old values. at not below the size throws 2.
    void UpShift(unsigned int at, unsigned int n);
    /// Optionally grows by n, opens a gap at `at` and fills it with src[from...] (count before
    /// source position). Throws as DownShift and CopyItemsFrom (5 with object = &src).
    CZRB_Vector& InsertItems(unsigned int at, CZRB_Vector& src, unsigned int n, unsigned int from,
                             unsigned char grow);
    /// As above from a plain array.
    CZRB_Vector& InsertItems(unsigned int at, T* src, unsigned int n, unsigned int from,
                             unsigned char grow);
    /// Optionally grows by n, opens a gap at `at` and writes value n times. Positions past the
    /// end (possible without grow) are not written.
    CZRB_Vector& InsertItems(unsigned int at, const T& value, unsigned int n, unsigned char grow);
    /// As above from the list's cursor onward (see CopyItemsFrom); returns a copy of the whole
    /// vector by value.
    CZRB_Vector InsertItems(unsigned int at, CZRB_List<T>& src, unsigned int n, unsigned char grow);
    /// UpShift(at, n) (at not below the size throws 2); with shrink non-zero the size becomes
    /// at + max(0, size - at - n), otherwise the tail keeps duplicated old values.
    CZRB_Vector& DeleteItems(unsigned int at, unsigned int n, unsigned char shrink);
    /// @}

    /// @name Filling, searching, reordering, comparing
    /// @{

    /// Sets every element to value.
    CZRB_Vector& Fill(const T& value);
    /// Sets this[at .. at+n-1] to value; n = 0 does nothing; with grow non-zero the vector
    /// first grows to at + n; an end beyond the size throws 2.
    CZRB_Vector& Fill(const T& value, unsigned int at, unsigned int n, unsigned char grow);
    /// First element equal to value at start or after: its position to *index and 1; else 0
    /// and *index unchanged. A start not below the size returns 0.
    unsigned char FindToEnd(const T& value, unsigned int* index, unsigned int start);
    /// First element equal to value at start or before (the nearest to start): its position to
    /// *index and 1; else 0. A start that is negative as a signed value returns 0; positions at
    /// or beyond the size hold nothing and are skipped.
    unsigned char FindToStart(const T& value, unsigned int* index, unsigned int start);
    /// Exchanges elements i and j. Kept as shipped: the check is "greater than the size"
    /// (throws 2); an index equal to the size names no element and throws 2 as well.
    void SwapItems(unsigned int i, unsigned int j);
    /// Reverses the whole vector.
    CZRB_Vector& InvertItemsOrder();
    /// Reverses this[at .. at+n-1]; n < 2 does nothing; stops when at + k reaches the size; a
    /// partner position at or beyond the size throws 2.
    CZRB_Vector& InvertItemsOrder(unsigned int at, unsigned int n);
    /// Exchange sort over adjacent pairs: compare(later, earlier) positive with ascending 0, or
    /// negative with ascending non-zero, exchanges them; equal elements never move. Passes end
    /// after one without exchange, so the vector is returned sorted (ascending non-zero:
    /// smallest first). An empty vector throws 2.
    void Sort(signed char (*compare)(const T&, const T&), unsigned char ascending);
    /// 1 when the sizes are equal and every element is equal in order.
    unsigned char operator==(const CZRB_Vector& other) const;
    /// The negation of operator==.
    unsigned char operator!=(const CZRB_Vector& other) const;
    /// @}

protected:
    /// Copy of src; nothing on self-copy; reallocates (size 0 included) when the sizes differ.
    void DataCopy(const CZRB_Vector& src);
    /// The list's items in order, read from its first item with Next(1).
    void DataCopy(CZRB_List<T>& src);
    /// Frees the block; the vector is empty afterwards.
    void DeleteBuffer();

    /// Raw room for `capacity` elements (null for 0); nothing is constructed in it.
    static T* AllocateFunction(unsigned int capacity);
    /// Frees room made by AllocateFunction (null is ignored) once its elements are destroyed.
    static void FreeFunction(T* block, unsigned int capacity);
    /// Makes block[from .. to-1] new elements (zero, or default-constructed), each then set to
    /// *fill when fill is given. On a throw the elements made are destroyed again.
    static void ConstructFunction(T* block, unsigned int from, unsigned int to, const T* fill);
    /// Makes block[at .. at+count-1] new elements set to source[0 .. count-1] (separate room).
    static void ConstructCopiesFunction(T* block, unsigned int at, const T* source,
                                        unsigned int count);
    /// Destroys block[from .. to-1], the last first (nothing to do for arithmetic T).
    static void DestroyFunction(T* block, unsigned int from, unsigned int to);
    /// Recreate's work; fill null leaves positions without old element new. Grows into the
    /// spare room when it can keep every element in place, else allocates exactly n.
    void RecreateFunction(unsigned int n, unsigned int from, const T* fill);
    /// Recreate(n, 0[, *fill]) for the step-by-step paths: growing beyond the room allocates
    /// at least twice the room; shrinking stays in place while the spare room stays below
    /// the elements. fill may be one of the vector's own elements.
    void ResizeFunction(unsigned int n, const T* fill);
    /// Grows to `end` when grow is set and end is beyond the size; then throws 2 when end is
    /// beyond the size.
    void PrepareDestinationFunction(unsigned __int64 end, unsigned char grow);
    /// The first steps of every InsertItems: grows by n when grow is set, then DownShift.
    void OpenGapFunction(unsigned int at, unsigned int n, unsigned char grow);

    T* m_pItems;              ///< the element block; null when empty
    unsigned int m_nLength;   ///< the number of elements
    unsigned int m_nCapacity; ///< elements the block has room for; 0 exactly when it is null

private:
    /// Room being filled for the vector: its elements are destroyed and the room freed unless
    /// the vector takes it over with AdoptFunction.
    class CNewBlock {
    public:
        explicit CNewBlock(unsigned int capacity)
            : items(AllocateFunction(capacity)), capacity(capacity), length(0) {}
        CNewBlock(const CNewBlock&) = delete;
        CNewBlock& operator=(const CNewBlock&) = delete;
        ~CNewBlock() {
            DestroyFunction(items, 0, length);
            FreeFunction(items, capacity);
        }
        /// Appends copies of source[0 .. count-1].
        void Append(const T* source, unsigned int count) {
            ConstructCopiesFunction(items, length, source, count);
            length += count;
        }
        /// New elements up to n, each set to *fill when given.
        void Extend(unsigned int n, const T* fill) {
            ConstructFunction(items, length, n, fill);
            length = n;
        }

        T* items;
        unsigned int capacity;
        unsigned int length;
    };

    /// Destroys the elements, frees the block and takes over the new one.
    void AdoptFunction(CNewBlock& block);
};

// ---------------------------------------------------------------------------------------
// Storage

template <class T>
T* CZRB_Vector<T>::AllocateFunction(unsigned int capacity) {
    return capacity == 0 ? nullptr : std::allocator<T>().allocate(capacity);
}

template <class T>
void CZRB_Vector<T>::FreeFunction(T* block, unsigned int capacity) {
    if (block != nullptr) {
        std::allocator<T>().deallocate(block, capacity);
    }
}

template <class T>
void CZRB_Vector<T>::ConstructFunction(T* block, unsigned int from, unsigned int to,
                                       const T* fill) {
    if (from >= to) {
        return;
    }
    if constexpr (std::is_arithmetic_v<T>) {
        if (fill != nullptr) {
            std::fill(block + from, block + to, *fill);
        } else {
            std::memset(static_cast<void*>(block + from), 0, sizeof(T) * (to - from));
        }
    } else {
        unsigned int made = from;
        try {
            while (made < to) {
                ::new (static_cast<void*>(block + made)) T();
                ++made;
                if (fill != nullptr) {
                    block[made - 1] = *fill;
                }
            }
        } catch (...) {
            DestroyFunction(block, from, made);
            throw;
        }
    }
}

template <class T>
void CZRB_Vector<T>::ConstructCopiesFunction(T* block, unsigned int at, const T* source,
                                             unsigned int count) {
    if (count == 0) {
        return;
    }
    if constexpr (std::is_arithmetic_v<T>) {
        std::memcpy(static_cast<void*>(block + at), source, sizeof(T) * count);
    } else {
        // Default-constructed, then assigned: an element is made the same way on every path.
        unsigned int made = 0;
        try {
            while (made < count) {
                ::new (static_cast<void*>(block + at + made)) T();
                ++made;
                block[at + made - 1] = source[made - 1];
            }
        } catch (...) {
            DestroyFunction(block, at, at + made);
            throw;
        }
    }
}

template <class T>
void CZRB_Vector<T>::DestroyFunction(T* block, unsigned int from, unsigned int to) {
    if constexpr (!std::is_arithmetic_v<T>) {
        while (to > from) {
            block[--to].~T();
        }
    }
}

template <class T>
void CZRB_Vector<T>::DeleteBuffer() {
    DestroyFunction(m_pItems, 0, m_nLength);
    FreeFunction(m_pItems, m_nCapacity);
    m_pItems = nullptr;
    m_nLength = 0;
    m_nCapacity = 0;
}

template <class T>
void CZRB_Vector<T>::AdoptFunction(CNewBlock& block) {
    DeleteBuffer();
    m_pItems = block.items;
    m_nLength = block.length;
    m_nCapacity = block.items != nullptr ? block.capacity : 0;
    block.items = nullptr;
    block.length = 0;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::DeleteAll() {
    DeleteBuffer();
    return *this;
}

// ---------------------------------------------------------------------------------------
// Construction

template <class T>
CZRB_Vector<T>::CZRB_Vector(unsigned int n) : m_pItems(nullptr), m_nLength(0), m_nCapacity(0) {
    Create(n);
}

template <class T>
CZRB_Vector<T>::CZRB_Vector(T* items, unsigned int n)
    : m_pItems(nullptr), m_nLength(0), m_nCapacity(0) {
    Create(items, n);
}

template <class T>
CZRB_Vector<T>::CZRB_Vector(unsigned int n, const T& value)
    : m_pItems(nullptr), m_nLength(0), m_nCapacity(0) {
    Create(n, value);
}

template <class T>
CZRB_Vector<T>::CZRB_Vector(const CZRB_Vector& src)
    : CZRB_Object(src), m_pItems(nullptr), m_nLength(0), m_nCapacity(0) {
    DataCopy(src);
}

template <class T>
CZRB_Vector<T>::~CZRB_Vector() {
    DeleteBuffer();
}

// The new block is filled before the old one is freed, so the arguments may refer to the
// vector's own elements.
template <class T>
void CZRB_Vector<T>::Create(unsigned int n) {
    if (n == 0) {
        throw CZRB_Exception(9, this, 0);
    }
    CNewBlock block(n);
    block.Extend(n, nullptr);
    AdoptFunction(block);
}

template <class T>
void CZRB_Vector<T>::Create(T* items, unsigned int n) {
    if (n == 0) {
        throw CZRB_Exception(9, this, 0);
    }
    CNewBlock block(n);
    block.Append(items, n);
    AdoptFunction(block);
}

template <class T>
void CZRB_Vector<T>::Create(unsigned int n, const T& value) {
    if (n == 0) {
        throw CZRB_Exception(9, this, 0);
    }
    CNewBlock block(n);
    block.Extend(n, &value);
    AdoptFunction(block);
}

template <class T>
void CZRB_Vector<T>::RecreateFunction(unsigned int n, unsigned int from, const T* fill) {
    if (m_nLength == 0) {
        if (fill != nullptr) {
            Create(n, *fill);
        } else {
            Create(n);
        }
        return;
    }
    if (m_pItems == nullptr) {
        throw CZRB_Exception(2, this, 0);
    }
    if (from == 0 && n >= m_nLength && n <= m_nCapacity) {
        // Every element stays where it is: only the new positions are made.
        ConstructFunction(m_pItems, m_nLength, n, fill);
        m_nLength = n;
        return;
    }
    CNewBlock block(n);
    if (from < m_nLength) {
        const unsigned int available = m_nLength - from;
        block.Append(m_pItems + from, n < available ? n : available);
    }
    block.Extend(n, fill);
    AdoptFunction(block);
}

template <class T>
void CZRB_Vector<T>::ResizeFunction(unsigned int n, const T* fill) {
    if (m_nLength != 0 && m_pItems != nullptr) {
        if (n < m_nLength && 2ULL * n > m_nCapacity) {
            // The spare room stays below the elements: shrink in place.
            DestroyFunction(m_pItems, n, m_nLength);
            m_nLength = n;
            return;
        }
        if (n > m_nCapacity) {
            const unsigned __int64 doubled = 2ULL * m_nCapacity;
            const unsigned __int64 capacity = doubled < n ? n : doubled;
            CNewBlock block(
                static_cast<unsigned int>(capacity < 0xFFFFFFFFULL ? capacity : 0xFFFFFFFFULL));
            block.Append(m_pItems, m_nLength);
            block.Extend(n, fill); // fill may lie in the old block, which is still there
            AdoptFunction(block);
            return;
        }
    }
    // Empty (Create), inside the room, or an exact shrink.
    RecreateFunction(n, 0, fill);
}

template <class T>
void CZRB_Vector<T>::Recreate(unsigned int n, unsigned int from) {
    RecreateFunction(n, from, nullptr);
}

template <class T>
void CZRB_Vector<T>::Recreate(unsigned int n, unsigned int from, const T& fill) {
    RecreateFunction(n, from, &fill);
}

template <class T>
T& CZRB_Vector<T>::operator[](unsigned int i) const {
    if (i >= m_nLength) {
        throw CZRB_Exception(5, this, 0);
    }
    return m_pItems[i];
}

// ---------------------------------------------------------------------------------------
// Assignment and copying

template <class T>
void CZRB_Vector<T>::DataCopy(const CZRB_Vector& src) {
    if (&src == this) {
        return;
    }
    if (m_nLength != src.m_nLength) {
        CNewBlock block(src.m_nLength);
        block.Append(src.m_pItems, src.m_nLength);
        AdoptFunction(block);
        return;
    }
    for (unsigned int i = 0; i < src.m_nLength; ++i) {
        m_pItems[i] = src.m_pItems[i];
    }
}

template <class T>
void CZRB_Vector<T>::DataCopy(CZRB_List<T>& src) {
    const unsigned int count = src.GetLength();
    if (m_nLength != count) {
        CNewBlock block(count);
        block.Extend(count, nullptr);
        AdoptFunction(block);
    }
    if (count == 0) {
        return;
    }
    src.ToStart();
    for (unsigned int i = 0; i < count; ++i) {
        m_pItems[i] = src.Next(1);
    }
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::operator=(const CZRB_Vector& src) {
    DataCopy(src);
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::operator=(CZRB_List<T>& src) {
    DataCopy(src);
    return *this;
}

template <class T>
void CZRB_Vector<T>::CopyItemsTo(unsigned int to, T* dst, unsigned int from, unsigned int n) {
    for (unsigned int k = 0; k < n && static_cast<unsigned __int64>(from) + k < m_nLength; ++k) {
        dst[to + k] = m_pItems[from + k];
    }
}

template <class T>
void CZRB_Vector<T>::PrepareDestinationFunction(unsigned __int64 end, unsigned char grow) {
    if (grow != 0 && end > m_nLength && end <= 0xFFFFFFFFULL) {
        ResizeFunction(static_cast<unsigned int>(end), nullptr);
    }
    if (end > m_nLength) {
        throw CZRB_Exception(2, this, 0);
    }
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::CopyItemsFrom(unsigned int to, CZRB_Vector& src, unsigned int from,
                                              unsigned int n, unsigned char grow) {
    if (n == 0) {
        return *this;
    }
    PrepareDestinationFunction(static_cast<unsigned __int64>(to) + n, grow);
    for (unsigned int k = 0; k < n; ++k) {
        if (static_cast<unsigned __int64>(from) + k >= src.m_nLength) {
            throw CZRB_Exception(5, &src, 0);
        }
        m_pItems[to + k] = src.m_pItems[from + k];
    }
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::CopyItemsFrom(unsigned int to, T* src, unsigned int from,
                                              unsigned int n, unsigned char grow) {
    if (n == 0) {
        return *this;
    }
    PrepareDestinationFunction(static_cast<unsigned __int64>(to) + n, grow);
    for (unsigned int k = 0; k < n; ++k) {
        m_pItems[to + k] = src[from + k];
    }
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::CopyItemsFrom(unsigned int to, CZRB_List<T>& src, unsigned int n,
                                              unsigned char grow) {
    if (n == 0) {
        return *this;
    }
    PrepareDestinationFunction(static_cast<unsigned __int64>(to) + n, grow);
    if (src.CurItemRef() == nullptr) {
        throw CZRB_Exception(5, &src, 0);
    }
    for (unsigned int k = 0; k < n; ++k) {
        m_pItems[to + k] = src.CurItem();
        if (src.IsEnd()) {
            break;
        }
        src.Next(1);
    }
    return *this;
}

template <class T>
void CZRB_Vector<T>::Extract(CZRB_Vector& dst, unsigned int from, unsigned int n) {
    if (&dst == this) {
        // Extracting into itself: the source is emptied first, so nothing is left to copy.
        DeleteAll();
        Create(n);
        return;
    }
    dst.DeleteAll();
    dst.Create(n);
    for (unsigned int k = 0; k < n && static_cast<unsigned __int64>(from) + k < m_nLength; ++k) {
        dst.m_pItems[k] = m_pItems[from + k];
    }
}

template <class T>
CZRB_Vector<T> CZRB_Vector<T>::ExtractInvertVector(unsigned int from, unsigned int n) {
    CZRB_Vector result;
    if (n == 0) {
        return result;
    }
    result.Create(n);
    for (unsigned int k = 0; k < n && static_cast<unsigned __int64>(from) + k < m_nLength; ++k) {
        result.m_pItems[n - 1 - k] = m_pItems[from + k];
    }
    return result;
}

// ---------------------------------------------------------------------------------------
// Growth and insertion

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::AppendVector(CZRB_Vector& src) {
    const unsigned int oldLength = m_nLength;
    const unsigned int count = src.m_nLength;
    ResizeFunction(oldLength + count, nullptr);
    // src may be this vector: its first count elements did not move within the block.
    for (unsigned int k = 0; k < count; ++k) {
        m_pItems[oldLength + k] = src.m_pItems[k];
    }
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::operator&=(CZRB_Vector& src) {
    return AppendVector(src);
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::AppendList(CZRB_List<T>& src) {
    const unsigned int oldLength = m_nLength;
    const unsigned int count = src.GetLength();
    ResizeFunction(oldLength + count, nullptr);
    if (count == 0) {
        return *this;
    }
    src.ToStart();
    for (unsigned int k = 0; k < count; ++k) {
        m_pItems[oldLength + k] = src.Next(1);
    }
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::operator&=(CZRB_List<T>& src) {
    return AppendList(src);
}

template <class T>
void CZRB_Vector<T>::DownShift(unsigned int at, unsigned int n) {
    if (at > m_nLength - 1U) {
        throw CZRB_Exception(2, this, 0);
    }
    const __int64 top = static_cast<__int64>(m_nLength) - static_cast<__int64>(n) - 1;
    if constexpr (std::is_arithmetic_v<T>) {
        // The top-down copy is exactly a memmove of the run at .. top.
        if (top >= at) {
            std::memmove(static_cast<void*>(m_pItems + at + n), m_pItems + at,
                         sizeof(T) * static_cast<std::size_t>(top - at + 1));
        }
    } else {
        for (__int64 i = top; i >= at; --i) {
            m_pItems[i + n] = m_pItems[i];
        }
    }
}

template <class T>
void CZRB_Vector<T>::UpShift(unsigned int at, unsigned int n) {
    if (at >= m_nLength) {
        throw CZRB_Exception(2, this, 0);
    }
    const unsigned __int64 first = static_cast<unsigned __int64>(at) + n;
    if constexpr (std::is_arithmetic_v<T>) {
        // The bottom-up copy is exactly a memmove of the run first .. size - 1.
        if (first < m_nLength) {
            std::memmove(static_cast<void*>(m_pItems + at), m_pItems + first,
                         sizeof(T) * static_cast<std::size_t>(m_nLength - first));
        }
    } else {
        for (unsigned __int64 i = first; i < m_nLength; ++i) {
            m_pItems[i - n] = m_pItems[i];
        }
    }
}

template <class T>
void CZRB_Vector<T>::OpenGapFunction(unsigned int at, unsigned int n, unsigned char grow) {
    if (grow != 0) {
        ResizeFunction(m_nLength + n, nullptr);
    }
    DownShift(at, n);
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::InsertItems(unsigned int at, CZRB_Vector& src, unsigned int n,
                                            unsigned int from, unsigned char grow) {
    OpenGapFunction(at, n, grow);
    return CopyItemsFrom(at, src, from, n, 1);
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::InsertItems(unsigned int at, T* src, unsigned int n,
                                            unsigned int from, unsigned char grow) {
    OpenGapFunction(at, n, grow);
    return CopyItemsFrom(at, src, from, n, 1);
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::InsertItems(unsigned int at, const T& value, unsigned int n,
                                            unsigned char grow) {
    const T copy(value); // value may be one of the elements about to move
    OpenGapFunction(at, n, grow);
    for (unsigned int k = 0; k < n && static_cast<unsigned __int64>(at) + k < m_nLength; ++k) {
        m_pItems[at + k] = copy;
    }
    return *this;
}

template <class T>
CZRB_Vector<T> CZRB_Vector<T>::InsertItems(unsigned int at, CZRB_List<T>& src, unsigned int n,
                                           unsigned char grow) {
    OpenGapFunction(at, n, grow);
    CopyItemsFrom(at, src, n, 1);
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::DeleteItems(unsigned int at, unsigned int n, unsigned char shrink) {
    UpShift(at, n);
    if (shrink != 0) {
        const __int64 rest =
            static_cast<__int64>(m_nLength) - static_cast<__int64>(at) - static_cast<__int64>(n);
        ResizeFunction(at + static_cast<unsigned int>(rest > 0 ? rest : 0), nullptr);
    }
    return *this;
}

// ---------------------------------------------------------------------------------------
// Filling, searching, reordering, comparing

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::Fill(const T& value) {
    for (unsigned int i = 0; i < m_nLength; ++i) {
        m_pItems[i] = value;
    }
    return *this;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::Fill(const T& value, unsigned int at, unsigned int n,
                                     unsigned char grow) {
    if (n == 0) {
        return *this;
    }
    const T copy(value); // value may be one of the elements of the block about to be replaced
    PrepareDestinationFunction(static_cast<unsigned __int64>(at) + n, grow);
    for (unsigned int k = 0; k < n; ++k) {
        m_pItems[at + k] = copy;
    }
    return *this;
}

template <class T>
unsigned char CZRB_Vector<T>::FindToEnd(const T& value, unsigned int* index, unsigned int start) {
    for (unsigned int i = start; i < m_nLength; ++i) {
        if (m_pItems[i] == value) {
            *index = i;
            return 1;
        }
    }
    return 0;
}

template <class T>
unsigned char CZRB_Vector<T>::FindToStart(const T& value, unsigned int* index, unsigned int start) {
    if (start > 0x7FFFFFFFU || m_nLength == 0) {
        return 0;
    }
    const unsigned int first = start < m_nLength ? start : m_nLength - 1;
    for (unsigned int i = first + 1; i-- > 0;) {
        if (m_pItems[i] == value) {
            *index = i;
            return 1;
        }
    }
    return 0;
}

template <class T>
void CZRB_Vector<T>::SwapItems(unsigned int i, unsigned int j) {
    if (i >= m_nLength || j >= m_nLength) {
        throw CZRB_Exception(2, this, 0);
    }
    T temp(m_pItems[i]);
    m_pItems[i] = m_pItems[j];
    m_pItems[j] = temp;
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::InvertItemsOrder() {
    return InvertItemsOrder(0, m_nLength);
}

template <class T>
CZRB_Vector<T>& CZRB_Vector<T>::InvertItemsOrder(unsigned int at, unsigned int n) {
    if (n < 2) {
        return *this;
    }
    for (unsigned int k = 0; k < n / 2; ++k) {
        const unsigned __int64 i = static_cast<unsigned __int64>(at) + k;
        if (i >= m_nLength) {
            return *this;
        }
        const unsigned __int64 j = static_cast<unsigned __int64>(at) + n - 1 - k;
        if (j >= m_nLength) {
            throw CZRB_Exception(2, this, 0);
        }
        SwapItems(static_cast<unsigned int>(i), static_cast<unsigned int>(j));
    }
    return *this;
}

template <class T>
void CZRB_Vector<T>::Sort(signed char (*compare)(const T&, const T&), unsigned char ascending) {
    if (m_nLength == 0) {
        throw CZRB_Exception(2, this, 0);
    }
    bool exchanged = true;
    while (exchanged) {
        exchanged = false;
        for (unsigned int i = 1; i < m_nLength; ++i) {
            const signed char result = compare(m_pItems[i], m_pItems[i - 1]);
            if ((result > 0 && ascending == 0) || (result < 0 && ascending != 0)) {
                SwapItems(i, i - 1);
                exchanged = true;
            }
        }
    }
}

template <class T>
unsigned char CZRB_Vector<T>::operator==(const CZRB_Vector& other) const {
    if (m_nLength != other.m_nLength) {
        return 0;
    }
    for (unsigned int i = 0; i < m_nLength; ++i) {
        if (!(m_pItems[i] == other.m_pItems[i])) {
            return 0;
        }
    }
    return 1;
}

template <class T>
unsigned char CZRB_Vector<T>::operator!=(const CZRB_Vector& other) const {
    return (*this == other) ? 0 : 1;
}

// Vector and list operate on each other; the list's definition completes this header.
#include "CZRB_List.h"

extern template class LZRB_API CZRB_Vector<signed char>;
extern template class LZRB_API CZRB_Vector<unsigned char>;
extern template class LZRB_API CZRB_Vector<short>;
extern template class LZRB_API CZRB_Vector<unsigned short>;
extern template class LZRB_API CZRB_Vector<int>;
extern template class LZRB_API CZRB_Vector<unsigned int>;
extern template class LZRB_API CZRB_Vector<__int64>;
extern template class LZRB_API CZRB_Vector<unsigned __int64>;
extern template class LZRB_API CZRB_Vector<float>;
extern template class LZRB_API CZRB_Vector<double>;

#endif
