/// @file
/// CZRB_IpAddress: an IPv4 or IPv6 address as a version tag and its numeric parts, with text
/// conversion, comparison, a stream record and the named containers CZRB_IpAddressVector and
/// CZRB_IpAddressList.
#ifndef CZRB_IPADDRESS_H
#define CZRB_IPADDRESS_H

#include "CZRB_List.h"
#include "CZRB_Object.h"
#include "CZRB_String.h"
#include "CZRB_Uint32Vector.h"
#include "CZRB_Vector.h"
#include "LZRB_NamedContainer.h"

class CZRB_Buffer;
class CZRB_IpAddress;

/// Writes the record: version (16 bits), part count (32 bits), the parts (32 bits each);
/// returns the stream. Stream codes: 23 when the stream is not writable.
LZRB_API CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_IpAddress& address);
/// Reads a record into `address`, which is first made invalid; returns the stream. Version
/// 65535 reads nothing more (the count written with it stays unread, kept as shipped);
/// versions 0 and 1 are set first, then the count and that many parts are read (not checked
/// against 4 or 8; a record cut short leaves the version set without parts); any other version
/// throws CZRB_Exception 32 (the stream). A count announcing more bytes than remain throws 3
/// (the stream) before anything is allocated; other stream codes as the stream gives.
LZRB_API CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_IpAddress& address);

/// An IPv4 or IPv6 address as a version tag and its numeric parts, with text conversion and
/// comparison.
///
/// Parsing is deliberately simple: a dotted quad, or exactly eight colon-separated groups,
/// every part read as a decimal number. IPv6 text is written in hexadecimal, so printing and
/// parsing again only round-trips when every group is below 10 (kept as shipped).
class LZRB_API CZRB_IpAddress : public CZRB_Object {
public:
    /// Version of an IPv4 address (four byte parts).
    static const unsigned int VERSION_IPV4 = 0;
    /// Version of an IPv6 address (eight 16-bit parts).
    static const unsigned int VERSION_IPV6 = 1;
    /// Version of an invalid address (no parts).
    static const unsigned int VERSION_INVALID = 65535;

    /// An invalid address (version 65535, no parts).
    CZRB_IpAddress();
    /// Copies version and parts.
    CZRB_IpAddress(const CZRB_IpAddress& other);
    /// Parses `text` as operator=(const CZRB_String&) does.
    CZRB_IpAddress(const CZRB_String& text);
    /// Frees the parts.
    ~CZRB_IpAddress() override;

    /// Copies version and parts; returns this address.
    CZRB_IpAddress& operator=(const CZRB_IpAddress& other);
    /// Parses `text`; returns this address. With a colon anywhere: exactly 8 colon-separated
    /// fields give IPv6, each field a decimal number kept to 16 bits (no "::" shorthand, no
    /// hexadecimal input). Otherwise exactly 4 dot-separated fields give IPv4, each kept to 8
    /// bits (300 becomes 44, text becomes 0). Any other text leaves the address invalid.
    CZRB_IpAddress& operator=(const CZRB_String& text);

    /// "%d.%d.%d.%d" for IPv4, eight "%04X" groups joined by colons for IPv6 (no shortening),
    /// an empty string when invalid. Throws CZRB_Exception 5 (the parts) when a streamed
    /// address holds fewer parts than its version prints.
    CZRB_String ToString() const;
    /// 1 when versions, part counts and all parts are equal (two invalid addresses are).
    unsigned char operator==(const CZRB_IpAddress& other) const;
    /// Negation of operator==.
    unsigned char operator!=(const CZRB_IpAddress& other) const;
    /// The low 8 bits of part `index` (an IPv6 group is cut to its low byte); 0 when the index
    /// is not below the part count.
    unsigned char GetDigit(unsigned int index) const;
    /// Part `index` = value; an index not below the part count is ignored.
    void SetDigit(unsigned int index, unsigned char value);

    friend CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_IpAddress& address);
    friend CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_IpAddress& address);

protected:
    /// Copies version and parts from `other`.
    void DataCopy(const CZRB_IpAddress& other);
    /// Parses `text` (see operator=(const CZRB_String&)).
    void DataCopy(const CZRB_String& text);
    /// Version 65535, parts freed.
    void SetToInvalid();

private:
    /// Splits `text` at `separator`; with exactly `count` fields sets `version` and the fields
    /// as decimal numbers masked with `mask`; else leaves the address invalid.
    void ParseFields(const CZRB_String& text, char separator, unsigned int count,
                     unsigned int version, unsigned int mask);

    unsigned int m_version;
    CZRB_Uint32Vector m_parts;
};

extern template class LZRB_API CZRB_Vector<CZRB_IpAddress>;
extern template class LZRB_API CZRB_List<CZRB_IpAddress>;

/// Named vector of addresses (default elements: invalid addresses).
class LZRB_API CZRB_IpAddressVector : public CZRB_Vector<CZRB_IpAddress> {
    LZRB_NAMED_VECTOR_MEMBERS(CZRB_IpAddressVector, CZRB_Vector<CZRB_IpAddress>, CZRB_IpAddress)
};

/// Named list of addresses.
class LZRB_API CZRB_IpAddressList : public CZRB_List<CZRB_IpAddress> {
    LZRB_NAMED_LIST_MEMBERS(CZRB_IpAddressList, CZRB_List<CZRB_IpAddress>, CZRB_IpAddress)
};

#endif
