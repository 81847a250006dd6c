/// @file
/// CZRB_Object: the common polymorphic base of the library's classes.
#ifndef CZRB_OBJECT_H
#define CZRB_OBJECT_H

#include "LZRB_Export.h"
#include "ZRB.h"

/// The common polymorphic base of the library's classes.
class LZRB_API CZRB_Object {
public:
    /// Constructs an empty base; holds no data.
    CZRB_Object() = default;
    /// Copies nothing.
    CZRB_Object(const CZRB_Object&) = default;
    /// Copies nothing and returns the left operand.
    CZRB_Object& operator=(const CZRB_Object&) = default;
    /// Does nothing; virtual so that derived objects are destroyed through a base pointer.
    virtual ~CZRB_Object();
};

#endif
