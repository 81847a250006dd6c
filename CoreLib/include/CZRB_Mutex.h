/// @file
/// CZRB_Mutex: an unnamed recursive mutex that reports success as 0 and failure as 1.
#ifndef CZRB_MUTEX_H
#define CZRB_MUTEX_H

#include "LZRB_Export.h"
#include "ZRB.h"

#include <memory>

/// An unnamed recursive mutex that reports success as 0 and failure as 1.
///
/// Copies share the same mutex: it is reference-counted and released when the last copy
/// is destroyed. When a thread ends while holding the mutex, the next Lock returns 1 and its
/// caller owns the mutex all the same.
class LZRB_API CZRB_Mutex {
public:
    /// Creates an unowned recursive mutex. Throws CZRB_Exception 32 (the mutex as object) when
    /// the system mutex cannot be created.
    CZRB_Mutex();
    /// Shares the mutex of `other`.
    CZRB_Mutex(const CZRB_Mutex& other);
    /// Shares the mutex of `other`, giving up this object's own share.
    CZRB_Mutex& operator=(const CZRB_Mutex& other);
    /// Gives up this object's share; the last owner destroys the system mutex.
    virtual ~CZRB_Mutex();

    /// Blocks until the calling thread owns the mutex (again, if it already does). 0 on
    /// success; 1 on failure, and also when the previous owner ended while holding it (the
    /// caller then owns it).
    unsigned int Lock();
    /// Releases one level of ownership. 0 on success; 1 when the caller does not own it.
    unsigned int Unlock();

protected:
    /// Makes this object share the mutex of `other`.
    void DataCopy(const CZRB_Mutex& other);

private:
    struct CHandle;
    std::shared_ptr<CHandle> m_handle;
};

#endif
