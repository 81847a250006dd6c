/// @file
/// The members every named container (CZRB_StringVector, CZRB_DateList, CZRB_Int32Vector, ...)
/// shares with its base vector or list, written once. Used inside the class body:
///
///     class LZRB_API CZRB_DateVector : public CZRB_Vector<CZRB_Date> {
///         LZRB_NAMED_VECTOR_MEMBERS(CZRB_DateVector, CZRB_Vector<CZRB_Date>, CZRB_Date)
///         LZRB_NAMED_SORT(CZRB_DateVector, CZRB_Vector<CZRB_Date>, CZRB_Date::SortCompare)
///     };
///
/// The destructor is only declared: each class defines it in its library source, so that its
/// virtual table and type information live in the library.
#ifndef LZRB_NAMEDCONTAINER_H
#define LZRB_NAMEDCONTAINER_H

#include <type_traits>

/// Construction (empty, copy), destruction and the two copy assignments of a named container
/// over Base (a vector or a list).
#define LZRB_NAMED_CONTAINER_MEMBERS(Name, Base)                                                   \
public:                                                                                            \
    /*! Empty container. */                                                                        \
    Name() {}                                                                                      \
    /*! Copy of src (a list's cursor on the head). */                                              \
    Name(const Name& src) : Base(src) {}                                                           \
    /*! Frees the elements (a list: every node). */                                                \
    ~Name() override;                                                                              \
    /*! Copy of src through the base's copy (a list: an empty src changes nothing). */             \
    Name& operator=(const Name& src) {                                                             \
        Base::operator=(src);                                                                      \
        return *this;                                                                              \
    }                                                                                              \
    /*! The same for a plain base container src. */                                                \
    Name& operator=(const Base& src) {                                                             \
        Base::operator=(src);                                                                      \
        return *this;                                                                              \
    }

/// The members of a named vector over Base, a vector of Type.
#define LZRB_NAMED_VECTOR_MEMBERS(Name, Base, Type)                                                \
    LZRB_NAMED_CONTAINER_MEMBERS(Name, Base)                                                       \
    /*! n default elements (zero for numbers); throws 9 when n is 0. */                            \
    explicit Name(unsigned int n) : Base(n) {}                                                     \
    /*! n copies of value; throws 9 when n is 0. */                                                \
    Name(unsigned int n, const Type& value) : Base(n, value) {}                                    \
    /*! The same for a count of any integer type (a literal 0 count is not read as an array). */   \
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>                           \
    Name(N n, const Type& value) : Base(static_cast<unsigned int>(n), value) {}                    \
    /*! A copy of items[0..n-1]; throws 9 when n is 0. */                                          \
    Name(Type* items, unsigned int n) : Base(items, n) {}                                          \
    /*! The base's other assignments (from a list, ...), as the base does them. */                 \
    using Base::operator=;

/// The members of a named list over Base, a list of Type.
#define LZRB_NAMED_LIST_MEMBERS(Name, Base, Type)                                                  \
    LZRB_NAMED_CONTAINER_MEMBERS(Name, Base)                                                       \
    /*! n items holding value, cursor on the first; n = 0 gives an empty list. */                  \
    Name(unsigned int n, const Type& value) : Base(n, value) {}                                    \
    /*! The same for a count of any integer type (a literal 0 count is not read as an array). */   \
    template <class N, std::enable_if_t<std::is_integral_v<N>, int> = 0>                           \
    Name(N n, const Type& value) : Base(static_cast<unsigned int>(n), value) {}                    \
    /*! items[0..n-1], cursor on the first; throws 9 when n is 0. */                               \
    Name(Type* items, unsigned int n) : Base(items, n) {}                                          \
    /*! The base's other assignments (from a vector, ...), as the base does them. */               \
    using Base::operator=;

/// Sort(ascending): the base's exchange sort with the element comparison Compare.
#define LZRB_NAMED_SORT(Name, Base, Compare)                                                       \
public:                                                                                            \
    /*! Base sort with Compare: non-zero ascending puts the smallest first, zero the largest;      \
        an empty vector throws 2, a list sorts stably. Returns this container. */                  \
    Name& Sort(unsigned char ascending) {                                                          \
        Base::Sort(Compare, ascending);                                                            \
        return *this;                                                                              \
    }

#endif
