/// @file
/// CZRB_List<T>: the library's doubly linked list with one cursor.
#ifndef CZRB_LIST_H
#define CZRB_LIST_H

#include "CZRB_Vector.h"

#include <type_traits>

/// The library's doubly linked list with one cursor.
///
/// Besides head and tail the list keeps a cursor, the current item, which almost every
/// operation reads or moves: reading walks the cursor, insertion happens before the cursor,
/// deletion removes the cursor's item. Failures throw CZRB_Exception with code 5 (no item) or
/// 9 (zero size). Even read-only use moves the cursor, so a list belongs to one thread.
///
/// Each item lives in its own node. Some insertions keep their shipped link updates, which
/// leave a previous link (InsertItems) or the tail member (InsertList) pointing elsewhere
/// than a fresh list would. Those links are followed as they are, but the list also keeps
/// every node in an ownership chain of its own: nodes are freed exactly once whatever the
/// links say, walks are bounded by the item count, and a node being freed is first removed
/// from every link that still names it.
template <class T>
class CZRB_List : public CZRB_Object {
public:
    /// @name Construction, size, equality
    /// @{

    /// Empty list, no cursor.
    CZRB_List();
    /// n items holding value, cursor on the first; n = 0 gives an empty list without error.
    CZRB_List(unsigned int n, const T& value);
    /// The same for a count of any integer type, so that a literal 0 count is not also read
    /// as a null array.
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>
    CZRB_List(N n, const T& value) : CZRB_List(static_cast<unsigned int>(n), value) {}
    /// items[0..n-1] in order, cursor on the first; n = 0 throws 9 (object = this).
    CZRB_List(T* items, unsigned int n);
    /// Copy of src through DataCopy (cursor on the head).
    CZRB_List(const CZRB_List& src);
    /// Frees every node.
    virtual ~CZRB_List();
    /// DataCopy: kept as shipped, assigning an empty list leaves this list unchanged;
    /// otherwise the items of src with the cursor on the head.
    CZRB_List& operator=(const CZRB_List& src);
    /// The vector's elements in order, cursor on the last (an empty vector empties the list).
    CZRB_List& operator=(CZRB_Vector<T>& src);

    /// The number of items.
    unsigned int GetLength() const { return m_nLength; }
    /// The number of items (an item count, not a truth value).
    unsigned int operator!() const { return m_nLength; }
    /// 1 when the lengths are equal and the items are equal pairwise from the heads; cursors
    /// are neither compared nor moved.
    unsigned char operator==(const CZRB_List& other) const;
    /// The negation of operator==.
    unsigned char operator!=(const CZRB_List& other) const;
    /// @}

    /// @name Cursor
    /// @{

    /// The cursor's item; no cursor throws 5.
    T& CurItem();
    /// The cursor node as an opaque handle (null when there is none).
    void* CurItemRef() const { return m_pCur; }
    /// Cursor to the head, returning its item; an empty list throws 5.
    T& ToStart();
    /// Cursor to the tail, returning its item; an empty list throws 5.
    T& ToEnd();
    /// 1 when the cursor is the head (also on an empty list).
    unsigned char IsStart() const { return m_pCur == m_pHead ? 1 : 0; }
    /// 1 when the cursor is the tail (also on an empty list).
    unsigned char IsEnd() const { return m_pCur == m_pTail ? 1 : 0; }
    /// The cursor's item before moving; then the cursor moves n steps forward, stopping on the
    /// tail. No cursor throws 5.
    T& Next(unsigned int n = 1);
    /// The same as Next(n).
    T& operator>>(unsigned int n);
    /// The cursor's item before moving; then the cursor moves n steps back, stopping on the
    /// head. No cursor throws 5.
    T& Prev(unsigned int n = 1);
    /// The same as Prev(n).
    T& operator<<(unsigned int n);
    /// Cursor to item i counted from the head, returning it; i not below the length throws 5.
    T& ToPos(unsigned int i);
    /// The same as ToPos(i): indexing always moves the cursor.
    T& operator[](unsigned int i);
    /// The number of items before the cursor (0 without cursor).
    unsigned int ItemsFromStart() const;
    /// The number of items after the cursor (0 without cursor).
    unsigned int ItemsToEnd() const;
    /// @}

    /// @name Adding items
    /// @{

    /// New value-initialised item after the tail; the cursor moves to it; returns its address.
    T* AppendItem();
    /// Appends item after the tail; the cursor moves to it.
    void AppendItem(const T& item);
    /// The same as AppendItem(item): with Pop the list is a stack at its tail.
    void Push(const T& item);
    /// The same as AppendItem(item).
    void operator+=(const T& item);
    /// New value-initialised item before the cursor (the only item of an empty list); the
    /// cursor moves to it. A non-empty list without cursor throws 5.
    T* InsertItem();
    /// InsertItem() storing item.
    void InsertItem(const T& item);
    /// Appends src[from .. from+n-1]; the cursor is then on the tail (also for n = 0).
    CZRB_List& AppendItems(T* src, unsigned int n, unsigned int from);
    /// Appends copies of all of src's items; the cursor is then on the tail; src's cursor is
    /// not used.
    CZRB_List& AppendList(CZRB_List& src);
    /// The same as AppendList.
    CZRB_List& operator&=(CZRB_List& src);
    /// Links src[from .. from+n-1] in before the cursor. Kept as shipped: the cursor node's own
    /// previous link and the cursor stay as they were, and with the cursor on the head the
    /// first new item becomes the head. No cursor throws 5; n = 0 does nothing.
    CZRB_List& InsertItems(T* src, unsigned int n, unsigned int from);
    /// Links copies of src's items in before the cursor and moves the cursor to the last of
    /// them. Kept as shipped: the tail member then designates that last inserted item, not the
    /// real last node. On an empty list the copies are appended. A non-empty list without
    /// cursor throws 5; an empty src changes nothing.
    CZRB_List& InsertList(CZRB_List& src);
    /// As InsertItems(T*...) with src[from ...], stopping after n items or at src's end.
    CZRB_List& InsertItems(CZRB_Vector<T>& src, unsigned int n, unsigned int from);
    /// Appends copies of up to n items of src from its cursor onward (none without cursor);
    /// the cursor is then on the tail; returns a copy of the whole list.
    CZRB_List AppendItems(CZRB_List& src, unsigned int n);
    /// Appends copies of src's elements; the cursor is then on the tail (an empty list with an
    /// empty vector keeps no cursor).
    CZRB_List& AppendVector(CZRB_Vector<T>& src);
    /// The same as AppendVector.
    CZRB_List& operator&=(CZRB_Vector<T>& src);
    /// Links copies of n items of src, from src's cursor onward, in before the cursor, with the
    /// link updates of InsertItems(T*...). No cursor throws 5; src running out throws 5 (object
    /// = src) with the copies made so far linked and the last one not joined to the cursor node.
    /// Returns a copy of the whole list.
    CZRB_List InsertItems(CZRB_List& src, unsigned int n);
    /// dst becomes copies of up to n items from the cursor onward, dst's cursor on its last
    /// item; this cursor does not move. No cursor throws 5 (object = this).
    void Extract(CZRB_List& dst, unsigned int n);
    /// @}

    /// @name Copying items without changing the length
    /// @{

    /// Overwrites n items from the cursor onward with src's items from its cursor onward;
    /// either list running out throws 5 (object = this) after the items already written.
    CZRB_List& CopyItemsFrom(CZRB_List& src, unsigned int n);
    /// Overwrites up to n items from the cursor onward with src[from ...], stopping at the
    /// tail. No cursor throws 5.
    CZRB_List& CopyItemsFrom(T* src, unsigned int from, unsigned int n);
    /// As above, also stopping at the end of src.
    CZRB_List& CopyItemsFrom(CZRB_Vector<T>& src, unsigned int from, unsigned int n);
    /// Copies up to n items from the cursor onward to dst[at ...], stopping at the tail. No
    /// cursor throws 5.
    void CopyItemsTo(T* dst, unsigned int at, unsigned int n);
    /// @}

    /// @name Removing items
    /// @{

    /// Deletes the cursor's item: the cursor moves to the following item, or to the previous
    /// one when the tail was deleted; deleting the head makes the next node head and cursor.
    /// No cursor: nothing.
    CZRB_List& DeleteItem();
    /// Deletes up to n items from the cursor onward; deleting the tail ends it with the cursor
    /// on the new tail. No cursor: nothing.
    CZRB_List& DeleteItems(unsigned int n);
    /// Takes the tail's item into *out and deletes it (cursor on the new tail): 1; an empty
    /// list returns 0.
    unsigned char Pop(T* out);
    /// before non-zero: deletes the cursor's item and all before it; zero: the cursor's item
    /// and all after it. The cursor is then on the tail. No cursor: nothing.
    CZRB_List& Truncate(unsigned char before);
    /// Frees every node; no cursor afterwards.
    CZRB_List& DeleteAll();
    /// @}

    /// @name Searching, ordering
    /// @{

    /// From the cursor (inclusive) towards the tail, the first item equal to value becomes
    /// the cursor: 1; otherwise 0 and the cursor stays (also without cursor).
    unsigned char FindToEnd(const T& value);
    /// The same towards the head.
    unsigned char FindToStart(const T& value);
    /// Exchanges the node (a CurItemRef handle of this list) with its following node by
    /// relinking; head and tail follow. A null node or one without successor throws 5.
    void SwapItems(void* node);
    /// Exchange sort over adjacent nodes: compare(successor, node) positive with ascending 0,
    /// or negative with ascending non-zero, exchanges them; stops after a pass without
    /// exchange. Stable; the cursor keeps designating the same node.
    void Sort(signed char (*compare)(const T&, const T&), unsigned char ascending);
    /// @}

protected:
    /// One item with its links.
    struct CNode {
        CNode* prev;      ///< the previous node by the list's links
        CNode* next;      ///< the next node by the list's links
        T item;           ///< the item
        CNode* ownerPrev; ///< previous in the ownership chain (every node, regardless of prev/next)
        CNode* ownerNext; ///< next node of the ownership chain
    };

    /// Copy of src reusing the existing nodes, cursor on the head. Kept as shipped: nothing
    /// happens when src is this list or empty.
    void DataCopy(const CZRB_List& src);
    /// DeleteAll, then the vector's elements appended; cursor on the tail.
    void DataCopy(CZRB_Vector<T>& src);
    /// Next(n)'s work.
    T& NextFunction(unsigned int n);
    /// Prev(n)'s work.
    T& PreviousFunction(unsigned int n);
    /// ToPos(i)'s work.
    T& PosFunction(unsigned int i);

    /// A new owned node with a value-initialised item; the length grows by one.
    CNode* NewNodeFunction();
    /// A new owned node holding a copy of item.
    CNode* NewNodeFunction(const T& item);
    /// Frees an owned node; the length drops by one.
    void FreeNodeFunction(CNode* node);
    /// Links a new node holding item after the tail (cursor unchanged).
    CNode* AppendNodeFunction(const T& item);
    /// Creates a node for item linked after `previous` (the shipped InsertItems link update).
    CNode* LinkBeforeCursorFunction(CNode* previous, const T& item);
    /// The node after `node` by its link (null past the last node); walks that use it are
    /// bounded by the item count.
    CNode* ForwardFunction(CNode* node) const;
    /// The node before `node` by its link (null before the first node).
    CNode* BackwardFunction(CNode* node) const;
    /// Exchanges node and its successor by relinking.
    void SwapWithNextFunction(CNode* node);
    /// Appends to dst copies of up to n items from the cursor onward.
    void CollectFunction(CZRB_List& dst, unsigned int n) const;

    CNode* m_pHead;         ///< the first node, null when empty
    CNode* m_pTail;         ///< the last node, null when empty
    CNode* m_pCur;          ///< the cursor, null when there is none
    unsigned int m_nLength; ///< the number of items

private:
    /// ForwardFunction or BackwardFunction: the direction of a walk.
    using t_StepFunction = CNode* (CZRB_List::*)(CNode*) const;

    /// Removes every link to a node about to be freed (only needed after the shipped
    /// insertions left links that disagree).
    void UnlinkEverywhereFunction(CNode* node);
    /// The cursor's item before moving; then up to n steps by `step`, stopping at the last
    /// node in that direction. No cursor throws 5.
    T& MoveCursorFunction(unsigned int n, t_StepFunction step);
    /// The number of nodes reachable from the cursor by `step` (0 without cursor).
    unsigned int CountFromCursorFunction(t_StepFunction step) const;
    /// From the cursor (inclusive) by `step`, the first item equal to value becomes the
    /// cursor: 1; otherwise 0.
    unsigned char FindFromCursorFunction(const T& value, t_StepFunction step);

    CNode* m_pOwned;
    unsigned char m_bLinksIrregular;
};

// ---------------------------------------------------------------------------------------
// Nodes

template <class T>
typename CZRB_List<T>::CNode* CZRB_List<T>::NewNodeFunction() {
    CNode* node = new CNode();
    node->ownerNext = m_pOwned;
    if (m_pOwned != nullptr) {
        m_pOwned->ownerPrev = node;
    }
    m_pOwned = node;
    ++m_nLength;
    return node;
}

template <class T>
typename CZRB_List<T>::CNode* CZRB_List<T>::NewNodeFunction(const T& item) {
    CNode* node = NewNodeFunction();
    node->item = item;
    return node;
}

template <class T>
void CZRB_List<T>::UnlinkEverywhereFunction(CNode* node) {
    CNode* after = node->next == node ? nullptr : node->next;
    CNode* before = node->prev == node ? nullptr : node->prev;
    for (CNode* other = m_pOwned; other != nullptr; other = other->ownerNext) {
        if (other->next == node) {
            other->next = after;
        }
        if (other->prev == node) {
            other->prev = before;
        }
    }
    if (m_pHead == node) {
        m_pHead = after;
    }
    if (m_pTail == node) {
        m_pTail = before;
    }
    if (m_pCur == node) {
        m_pCur = nullptr;
    }
}

template <class T>
void CZRB_List<T>::FreeNodeFunction(CNode* node) {
    if (node->ownerPrev != nullptr) {
        node->ownerPrev->ownerNext = node->ownerNext;
    } else {
        m_pOwned = node->ownerNext;
    }
    if (node->ownerNext != nullptr) {
        node->ownerNext->ownerPrev = node->ownerPrev;
    }
    --m_nLength;
    if (m_bLinksIrregular != 0) {
        UnlinkEverywhereFunction(node);
    }
    delete node;
    if (m_pOwned == nullptr) {
        m_pHead = m_pTail = m_pCur = nullptr;
        m_bLinksIrregular = 0;
    }
}

template <class T>
typename CZRB_List<T>::CNode* CZRB_List<T>::AppendNodeFunction(const T& item) {
    CNode* node = NewNodeFunction(item);
    node->prev = m_pTail;
    if (m_pTail != nullptr) {
        m_pTail->next = node;
    } else {
        m_pHead = node;
    }
    m_pTail = node;
    return node;
}

template <class T>
typename CZRB_List<T>::CNode* CZRB_List<T>::LinkBeforeCursorFunction(CNode* previous,
                                                                     const T& item) {
    CNode* node = NewNodeFunction(item);
    m_bLinksIrregular = 1;
    node->prev = previous;
    if (previous != nullptr) {
        previous->next = node;
    }
    if (m_pCur == m_pHead) {
        m_pHead = node;
    }
    return node;
}

template <class T>
typename CZRB_List<T>::CNode* CZRB_List<T>::ForwardFunction(CNode* node) const {
    return node->next;
}

template <class T>
typename CZRB_List<T>::CNode* CZRB_List<T>::BackwardFunction(CNode* node) const {
    return node->prev;
}

template <class T>
void CZRB_List<T>::SwapWithNextFunction(CNode* node) {
    CNode* follower = node->next;
    CNode* before = node->prev;
    CNode* after = follower->next;
    if (before != nullptr) {
        before->next = follower;
    }
    if (after != nullptr) {
        after->prev = node;
    }
    node->next = after;
    follower->prev = before;
    follower->next = node;
    node->prev = follower;
    if (m_pHead == node) {
        m_pHead = follower;
    }
    if (m_pTail == follower) {
        m_pTail = node;
    }
}

template <class T>
void CZRB_List<T>::CollectFunction(CZRB_List& dst, unsigned int n) const {
    CNode* node = m_pCur;
    for (unsigned int k = 0; k < n && k < m_nLength && node != nullptr; ++k) {
        dst.AppendNodeFunction(node->item);
        node = ForwardFunction(node);
    }
}

// ---------------------------------------------------------------------------------------
// Construction, size, equality

template <class T>
CZRB_List<T>::CZRB_List()
    : m_pHead(nullptr), m_pTail(nullptr), m_pCur(nullptr), m_nLength(0), m_pOwned(nullptr),
      m_bLinksIrregular(0) {}

template <class T>
CZRB_List<T>::CZRB_List(unsigned int n, const T& value) : CZRB_List() {
    for (unsigned int k = 0; k < n; ++k) {
        AppendNodeFunction(value);
    }
    m_pCur = m_pHead;
}

template <class T>
CZRB_List<T>::CZRB_List(T* items, unsigned int n) : CZRB_List() {
    if (n == 0) {
        throw CZRB_Exception(9, this, 0);
    }
    for (unsigned int k = 0; k < n; ++k) {
        AppendNodeFunction(items[k]);
    }
    m_pCur = m_pHead;
}

template <class T>
CZRB_List<T>::CZRB_List(const CZRB_List& src) : CZRB_List() {
    DataCopy(src);
}

template <class T>
CZRB_List<T>::~CZRB_List() {
    DeleteAll();
}

template <class T>
void CZRB_List<T>::DataCopy(const CZRB_List& src) {
    if (&src == this || src.m_nLength == 0) {
        return;
    }
    if (m_bLinksIrregular != 0) {
        DeleteAll();
    }
    CNode* target = m_pHead;
    CNode* lastKept = nullptr;
    CNode* source = src.m_pHead;
    for (unsigned int k = 0; k < src.m_nLength && source != nullptr; ++k) {
        if (target != nullptr) {
            target->item = source->item;
            lastKept = target;
            target = target->next;
        } else {
            lastKept = AppendNodeFunction(source->item);
        }
        source = src.ForwardFunction(source);
    }
    if (lastKept == nullptr) {
        DeleteAll();
        return;
    }
    if (target != nullptr) {
        // Surplus nodes: the last kept one becomes the tail.
        lastKept->next = nullptr;
        m_pTail = lastKept;
        while (target != nullptr) {
            CNode* following = target->next;
            FreeNodeFunction(target);
            target = following;
        }
    }
    m_pCur = m_pHead;
}

template <class T>
void CZRB_List<T>::DataCopy(CZRB_Vector<T>& src) {
    DeleteAll();
    AppendVector(src);
}

template <class T>
CZRB_List<T>& CZRB_List<T>::operator=(const CZRB_List& src) {
    DataCopy(src);
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::operator=(CZRB_Vector<T>& src) {
    DataCopy(src);
    return *this;
}

template <class T>
unsigned char CZRB_List<T>::operator==(const CZRB_List& other) const {
    if (m_nLength != other.m_nLength) {
        return 0;
    }
    CNode* mine = m_pHead;
    CNode* theirs = other.m_pHead;
    for (unsigned int k = 0; k < m_nLength; ++k) {
        if (mine == nullptr || theirs == nullptr) {
            return mine == theirs ? 1 : 0;
        }
        if (!(mine->item == theirs->item)) {
            return 0;
        }
        mine = ForwardFunction(mine);
        theirs = other.ForwardFunction(theirs);
    }
    return 1;
}

template <class T>
unsigned char CZRB_List<T>::operator!=(const CZRB_List& other) const {
    return (*this == other) ? 0 : 1;
}

// ---------------------------------------------------------------------------------------
// Cursor

template <class T>
T& CZRB_List<T>::CurItem() {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    return m_pCur->item;
}

template <class T>
T& CZRB_List<T>::ToStart() {
    if (m_pHead == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    m_pCur = m_pHead;
    return m_pCur->item;
}

template <class T>
T& CZRB_List<T>::ToEnd() {
    if (m_pTail == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    m_pCur = m_pTail;
    return m_pCur->item;
}

template <class T>
T& CZRB_List<T>::MoveCursorFunction(unsigned int n, t_StepFunction step) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    T& result = m_pCur->item;
    for (unsigned int k = 0; k < n && k < m_nLength; ++k) {
        CNode* neighbour = (this->*step)(m_pCur);
        if (neighbour == nullptr) {
            break;
        }
        m_pCur = neighbour;
    }
    return result;
}

template <class T>
T& CZRB_List<T>::NextFunction(unsigned int n) {
    return MoveCursorFunction(n, &CZRB_List::ForwardFunction);
}

template <class T>
T& CZRB_List<T>::PreviousFunction(unsigned int n) {
    return MoveCursorFunction(n, &CZRB_List::BackwardFunction);
}

template <class T>
T& CZRB_List<T>::PosFunction(unsigned int i) {
    if (i >= m_nLength) {
        throw CZRB_Exception(5, this, 0);
    }
    CNode* node = m_pHead;
    for (unsigned int k = 0; k < i && node != nullptr; ++k) {
        node = ForwardFunction(node);
    }
    if (node == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    m_pCur = node;
    return node->item;
}

template <class T>
T& CZRB_List<T>::Next(unsigned int n) {
    return NextFunction(n);
}

template <class T>
T& CZRB_List<T>::operator>>(unsigned int n) {
    return NextFunction(n);
}

template <class T>
T& CZRB_List<T>::Prev(unsigned int n) {
    return PreviousFunction(n);
}

template <class T>
T& CZRB_List<T>::operator<<(unsigned int n) {
    return PreviousFunction(n);
}

template <class T>
T& CZRB_List<T>::ToPos(unsigned int i) {
    return PosFunction(i);
}

template <class T>
T& CZRB_List<T>::operator[](unsigned int i) {
    return PosFunction(i);
}

template <class T>
unsigned int CZRB_List<T>::CountFromCursorFunction(t_StepFunction step) const {
    unsigned int count = 0;
    if (m_pCur == nullptr) {
        return 0;
    }
    for (CNode* node = (this->*step)(m_pCur); node != nullptr && count < m_nLength;
         node = (this->*step)(node)) {
        ++count;
    }
    return count;
}

template <class T>
unsigned int CZRB_List<T>::ItemsFromStart() const {
    return CountFromCursorFunction(&CZRB_List::BackwardFunction);
}

template <class T>
unsigned int CZRB_List<T>::ItemsToEnd() const {
    return CountFromCursorFunction(&CZRB_List::ForwardFunction);
}

// ---------------------------------------------------------------------------------------
// Adding items

template <class T>
T* CZRB_List<T>::AppendItem() {
    m_pCur = AppendNodeFunction(T());
    return &m_pCur->item;
}

template <class T>
void CZRB_List<T>::AppendItem(const T& item) {
    m_pCur = AppendNodeFunction(item);
}

template <class T>
void CZRB_List<T>::Push(const T& item) {
    AppendItem(item);
}

template <class T>
void CZRB_List<T>::operator+=(const T& item) {
    AppendItem(item);
}

template <class T>
T* CZRB_List<T>::InsertItem() {
    if (m_nLength == 0) {
        return AppendItem();
    }
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    CNode* node = NewNodeFunction();
    node->prev = m_pCur->prev;
    node->next = m_pCur;
    if (m_pCur->prev != nullptr) {
        m_pCur->prev->next = node;
    }
    if (m_pCur == m_pHead) {
        m_pHead = node;
    }
    m_pCur->prev = node;
    m_pCur = node;
    return &node->item;
}

template <class T>
void CZRB_List<T>::InsertItem(const T& item) {
    const T copy(item); // item may live in this list
    *InsertItem() = copy;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::AppendItems(T* src, unsigned int n, unsigned int from) {
    for (unsigned int k = 0; k < n; ++k) {
        AppendNodeFunction(src[from + k]);
    }
    m_pCur = m_pTail;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::AppendList(CZRB_List& src) {
    const unsigned int count = src.m_nLength;
    CNode* source = src.m_pHead;
    for (unsigned int k = 0; k < count && source != nullptr; ++k) {
        CNode* following = src.ForwardFunction(source);
        AppendNodeFunction(source->item);
        source = following;
    }
    m_pCur = m_pTail;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::operator&=(CZRB_List& src) {
    return AppendList(src);
}

template <class T>
CZRB_List<T>& CZRB_List<T>::InsertItems(T* src, unsigned int n, unsigned int from) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    if (n == 0) {
        return *this;
    }
    CNode* previous = m_pCur->prev;
    for (unsigned int k = 0; k < n; ++k) {
        previous = LinkBeforeCursorFunction(previous, src[from + k]);
    }
    previous->next = m_pCur;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::InsertList(CZRB_List& src) {
    if (&src == this) {
        CZRB_List snapshot(*this);
        return InsertList(snapshot);
    }
    if (m_nLength == 0) {
        return AppendList(src);
    }
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    if (src.m_nLength == 0 || src.m_pHead == nullptr) {
        return *this;
    }
    CNode* previous = m_pCur->prev;
    CNode* source = src.m_pHead;
    for (unsigned int k = 0; k < src.m_nLength && source != nullptr; ++k) {
        CNode* node = NewNodeFunction(source->item);
        node->prev = previous;
        if (previous != nullptr) {
            previous->next = node;
        } else {
            m_pHead = node;
        }
        m_pTail = node;
        previous = node;
        source = src.ForwardFunction(source);
    }
    m_bLinksIrregular = 1;
    previous->next = m_pCur;
    m_pCur->prev = previous;
    m_pCur = previous;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::InsertItems(CZRB_Vector<T>& src, unsigned int n, unsigned int from) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    CNode* previous = m_pCur->prev;
    CNode* last = nullptr;
    for (unsigned int k = 0; k < n && static_cast<unsigned __int64>(from) + k < src.GetLength();
         ++k) {
        previous = last = LinkBeforeCursorFunction(previous, src.GetBuf()[from + k]);
    }
    if (last != nullptr) {
        last->next = m_pCur;
    }
    return *this;
}

template <class T>
CZRB_List<T> CZRB_List<T>::AppendItems(CZRB_List& src, unsigned int n) {
    if (&src == this) {
        CZRB_List snapshot;
        CollectFunction(snapshot, n);
        AppendList(snapshot);
        return *this;
    }
    CNode* source = src.m_pCur;
    for (unsigned int k = 0; k < n && k < src.m_nLength && source != nullptr; ++k) {
        AppendNodeFunction(source->item);
        source = src.ForwardFunction(source);
    }
    m_pCur = m_pTail;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::AppendVector(CZRB_Vector<T>& src) {
    const unsigned int count = src.GetLength();
    for (unsigned int k = 0; k < count; ++k) {
        AppendNodeFunction(src.GetBuf()[k]);
    }
    m_pCur = m_pTail;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::operator&=(CZRB_Vector<T>& src) {
    return AppendVector(src);
}

template <class T>
CZRB_List<T> CZRB_List<T>::InsertItems(CZRB_List& src, unsigned int n) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    if (&src == this) {
        CZRB_List snapshot;
        CollectFunction(snapshot, n);
        snapshot.m_pCur = snapshot.m_pHead;
        try {
            return InsertItems(snapshot, n);
        } catch (CZRB_Exception& e) {
            if (e.object == &snapshot) {
                e.object = this; // the source is this list itself
            }
            throw;
        }
    }
    if (n == 0) {
        return *this;
    }
    CNode* previous = m_pCur->prev;
    CNode* source = src.m_pCur;
    for (unsigned int k = 0; k < n; ++k) {
        if (source == nullptr) {
            throw CZRB_Exception(5, &src, 0); // a copy that runs out reports its source
        }
        previous = LinkBeforeCursorFunction(previous, source->item);
        source = k < src.m_nLength ? src.ForwardFunction(source) : nullptr;
    }
    previous->next = m_pCur;
    return *this;
}

template <class T>
void CZRB_List<T>::Extract(CZRB_List& dst, unsigned int n) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    if (&dst == this) {
        CZRB_List snapshot;
        CollectFunction(snapshot, n);
        DeleteAll();
        AppendList(snapshot);
        return;
    }
    dst.DeleteAll();
    CollectFunction(dst, n);
    dst.m_pCur = dst.m_pTail;
}

// ---------------------------------------------------------------------------------------
// Copying items without changing the length

template <class T>
CZRB_List<T>& CZRB_List<T>::CopyItemsFrom(CZRB_List& src, unsigned int n) {
    CNode* target = m_pCur;
    CNode* source = src.m_pCur;
    for (unsigned int k = 0; k < n; ++k) {
        if (target == nullptr || source == nullptr) {
            throw CZRB_Exception(5, this, 0);
        }
        target->item = source->item;
        target = k < m_nLength ? ForwardFunction(target) : nullptr;
        source = k < src.m_nLength ? src.ForwardFunction(source) : nullptr;
    }
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::CopyItemsFrom(T* src, unsigned int from, unsigned int n) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    CNode* target = m_pCur;
    for (unsigned int k = 0; k < n && k < m_nLength && target != nullptr; ++k) {
        target->item = src[from + k];
        target = ForwardFunction(target);
    }
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::CopyItemsFrom(CZRB_Vector<T>& src, unsigned int from, unsigned int n) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    CNode* target = m_pCur;
    for (unsigned int k = 0; k < n && k < m_nLength && target != nullptr &&
                             static_cast<unsigned __int64>(from) + k < src.GetLength();
         ++k) {
        target->item = src.GetBuf()[from + k];
        target = ForwardFunction(target);
    }
    return *this;
}

template <class T>
void CZRB_List<T>::CopyItemsTo(T* dst, unsigned int at, unsigned int n) {
    if (m_pCur == nullptr) {
        throw CZRB_Exception(5, this, 0);
    }
    CNode* source = m_pCur;
    for (unsigned int k = 0; k < n && k < m_nLength && source != nullptr; ++k) {
        dst[at + k] = source->item;
        source = ForwardFunction(source);
    }
}

// ---------------------------------------------------------------------------------------
// Removing items

template <class T>
CZRB_List<T>& CZRB_List<T>::DeleteItem() {
    CNode* node = m_pCur;
    if (node == nullptr) {
        return *this;
    }
    if (m_nLength == 1) {
        return DeleteAll();
    }
    if (node == m_pHead) {
        m_pHead = node->next;
        if (m_pHead != nullptr) {
            m_pHead->prev = nullptr;
        }
        m_pCur = m_pHead;
    } else {
        CNode* before = node->prev;
        CNode* after = node->next;
        if (before != nullptr) {
            before->next = after;
        }
        if (after != nullptr) {
            after->prev = before;
        }
        if (node == m_pTail) {
            m_pTail = before;
            m_pCur = before;
        } else {
            m_pCur = after != nullptr ? after : before;
        }
    }
    FreeNodeFunction(node);
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::DeleteItems(unsigned int n) {
    for (unsigned int k = 0; k < n && m_pCur != nullptr; ++k) {
        const bool wasLast = m_pCur == m_pTail || m_pCur->next == nullptr;
        DeleteItem();
        if (wasLast) {
            break;
        }
    }
    return *this;
}

template <class T>
unsigned char CZRB_List<T>::Pop(T* out) {
    if (m_pTail == nullptr) {
        return 0;
    }
    m_pCur = m_pTail;
    if (out != nullptr) {
        *out = m_pCur->item;
    }
    DeleteItem();
    return 1;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::Truncate(unsigned char before) {
    CNode* cursor = m_pCur;
    if (cursor == nullptr) {
        return *this;
    }
    if (before != 0) {
        CNode* newHead = ForwardFunction(cursor);
        if (newHead == nullptr) {
            return DeleteAll();
        }
        for (CNode* node = cursor; node != nullptr && node != newHead;) {
            CNode* preceding = BackwardFunction(node);
            FreeNodeFunction(node);
            node = preceding;
        }
        newHead->prev = nullptr;
        m_pHead = newHead;
    } else {
        CNode* newTail = BackwardFunction(cursor);
        if (newTail == nullptr) {
            return DeleteAll();
        }
        for (CNode* node = cursor; node != nullptr && node != newTail;) {
            CNode* following = ForwardFunction(node);
            FreeNodeFunction(node);
            node = following;
        }
        newTail->next = nullptr;
        m_pTail = newTail;
    }
    m_pCur = m_pTail;
    return *this;
}

template <class T>
CZRB_List<T>& CZRB_List<T>::DeleteAll() {
    while (m_pOwned != nullptr) {
        CNode* node = m_pOwned;
        m_pOwned = node->ownerNext;
        delete node;
    }
    m_pHead = m_pTail = m_pCur = nullptr;
    m_nLength = 0;
    m_bLinksIrregular = 0;
    return *this;
}

// ---------------------------------------------------------------------------------------
// Searching, ordering

template <class T>
unsigned char CZRB_List<T>::FindFromCursorFunction(const T& value, t_StepFunction step) {
    CNode* node = m_pCur;
    for (unsigned int k = 0; k < m_nLength && node != nullptr; ++k) {
        if (node->item == value) {
            m_pCur = node;
            return 1;
        }
        node = (this->*step)(node);
    }
    return 0;
}

template <class T>
unsigned char CZRB_List<T>::FindToEnd(const T& value) {
    return FindFromCursorFunction(value, &CZRB_List::ForwardFunction);
}

template <class T>
unsigned char CZRB_List<T>::FindToStart(const T& value) {
    return FindFromCursorFunction(value, &CZRB_List::BackwardFunction);
}

template <class T>
void CZRB_List<T>::SwapItems(void* node) {
    CNode* first = static_cast<CNode*>(node);
    if (first == nullptr || first->next == nullptr || first->next == first) {
        throw CZRB_Exception(5, this, 0);
    }
    SwapWithNextFunction(first);
}

template <class T>
void CZRB_List<T>::Sort(signed char (*compare)(const T&, const T&), unsigned char ascending) {
    if (m_nLength < 2) {
        return;
    }
    // A regular list is sorted after at most m_nLength passes; the bounds only matter for
    // links left irregular by the shipped insertions.
    for (unsigned int pass = 0; pass <= m_nLength; ++pass) {
        bool sorted = true;
        CNode* node = m_pHead;
        for (unsigned int step = 0; step < m_nLength && node != nullptr; ++step) {
            CNode* follower = node->next;
            if (follower == nullptr || follower == node) {
                break;
            }
            const signed char result = compare(follower->item, node->item);
            if ((result > 0 && ascending == 0) || (result < 0 && ascending != 0)) {
                SwapWithNextFunction(node);
                sorted = false;
            } else {
                node = follower;
            }
        }
        if (sorted) {
            return;
        }
    }
}

extern template class LZRB_API CZRB_List<signed char>;
extern template class LZRB_API CZRB_List<unsigned char>;
extern template class LZRB_API CZRB_List<short>;
extern template class LZRB_API CZRB_List<unsigned short>;
extern template class LZRB_API CZRB_List<int>;
extern template class LZRB_API CZRB_List<unsigned int>;
extern template class LZRB_API CZRB_List<__int64>;
extern template class LZRB_API CZRB_List<unsigned __int64>;
extern template class LZRB_API CZRB_List<float>;
extern template class LZRB_API CZRB_List<double>;

#endif
