/// @file
/// CZRB_Exception: the one exception type thrown by the library.
#ifndef CZRB_EXCEPTION_H
#define CZRB_EXCEPTION_H

#include "LZRB_Export.h"
#include "ZRB.h"

/// The one exception type thrown by the library.
///
/// Codes in use: 2 range, 3 read past end, 5 no item, 8 not supported, 9 zero size,
/// 10 not rewindable, 23 not writable, 24 not readable, 30 no file, 32 failed.
/// `object` is the object that detected the fault; `detail` is 0 for every throw from
/// library code and is there for callers that build exceptions of their own.
class LZRB_API CZRB_Exception {
public:
    /// All three members zero: code 0, object null, detail 0.
    CZRB_Exception();
    /// Stores the three values unchanged; nothing is validated.
    CZRB_Exception(unsigned int code, const void* object, unsigned __int64 detail);
    /// Copies all three members.
    CZRB_Exception(const CZRB_Exception& other);
    /// Copies all three members.
    CZRB_Exception& operator=(const CZRB_Exception& other);
    /// Does nothing.
    virtual ~CZRB_Exception();

    unsigned int code;       ///< the fault, one of the codes above
    const void* object;      ///< the object that detected the fault
    unsigned __int64 detail; ///< 0 from library code; for callers' own exceptions
};

#endif
