/// @file
/// CZRB_Register: a 64-bit register of bit fields that callers on several threads can share.
#ifndef CZRB_REGISTER_H
#define CZRB_REGISTER_H

#include "CZRB_BitSet.h"
#include "CZRB_Mutex.h"

/// A 64-bit register of bit fields that callers on several threads can share.
///
/// The field operations do not lock: a caller that shares a register brackets its reads and
/// writes with Lock and Unlock. Copies share one recursive mutex, released with the last copy.
class LZRB_API CZRB_Register : public CZRB_BitSet {
public:
    /// 64 zero bits in one word, a new unowned mutex, both flag bytes 0. Throws
    /// CZRB_Exception 32 (the mutex) when the system mutex cannot be created.
    CZRB_Register();
    /// Copies the bits and both flag bytes and shares the source's mutex.
    CZRB_Register(const CZRB_Register& other);
    /// Copies the bits and both flag bytes and shares the source's mutex; returns *this.
    CZRB_Register& operator=(const CZRB_Register& other);
    /// The bit set's own assignments (a 64-bit value, another bit set) stay available.
    using CZRB_BitSet::operator=;
    /// Gives up this register's share of the mutex and frees the bits.
    virtual ~CZRB_Register();

    /// Zeroes every bit and both flag bytes.
    CZRB_Register& Reset();
    /// The field of `width` bits from bit `position`, clamped to the bits above the position;
    /// 0 for a position of 64 or more.
    unsigned __int64 GetField(unsigned char position, unsigned char width) const;
    /// Writes the low bits of value from bit `position` upward, clamped to the 64 bits;
    /// a position of 64 or more changes nothing.
    CZRB_Register& SetField(unsigned char position, unsigned char width, unsigned __int64 value);
    /// Waits without time limit until the calling thread owns the mutex; failures are ignored.
    void Lock();
    /// Releases one level of ownership of the mutex; failures are ignored.
    void Unlock();

protected:
    /// Copies the bits and both flag bytes and shares other's mutex.
    void DataCopy(const CZRB_Register& other);

    CZRB_Mutex m_mutex;        ///< shared with every copy; locked by Lock, released by Unlock
    unsigned char m_userFlag0; ///< the caller's own byte; no operation of the class interprets it
    unsigned char m_userFlag1; ///< the caller's own byte; no operation of the class interprets it
};

#endif
