#include "CZRB_IpAddress.h"

#include "CZRB_Buffer.h"
#include "CZRB_Exception.h"

template class CZRB_Vector<CZRB_IpAddress>;
template class CZRB_List<CZRB_IpAddress>;

CZRB_IpAddress::CZRB_IpAddress() : m_version(VERSION_INVALID) {}

CZRB_IpAddress::CZRB_IpAddress(const CZRB_IpAddress& other)
    : CZRB_Object(other), m_version(VERSION_INVALID) {
    DataCopy(other);
}

CZRB_IpAddress::CZRB_IpAddress(const CZRB_String& text) : m_version(VERSION_INVALID) {
    DataCopy(text);
}

CZRB_IpAddress::~CZRB_IpAddress() {}

CZRB_IpAddress& CZRB_IpAddress::operator=(const CZRB_IpAddress& other) {
    DataCopy(other);
    return *this;
}

CZRB_IpAddress& CZRB_IpAddress::operator=(const CZRB_String& text) {
    DataCopy(text);
    return *this;
}

void CZRB_IpAddress::DataCopy(const CZRB_IpAddress& other) {
    if (this == &other) {
        return;
    }
    m_version = other.m_version;
    m_parts = other.m_parts;
}

void CZRB_IpAddress::SetToInvalid() {
    m_version = VERSION_INVALID;
    m_parts.DeleteAll();
}

void CZRB_IpAddress::DataCopy(const CZRB_String& text) {
    SetToInvalid();
    unsigned int colon = 0;
    if (text.FindFromBegin(':', &colon, 0)) {
        ParseFields(text, ':', 8, VERSION_IPV6, 0xFFFFU);
    } else {
        ParseFields(text, '.', 4, VERSION_IPV4, 0xFFU);
    }
}

void CZRB_IpAddress::ParseFields(const CZRB_String& text, char separator, unsigned int count,
                                 unsigned int version, unsigned int mask) {
    CZRB_StringVector fields;
    text.ExtractTags(separator, fields);
    if (fields.GetLength() != count) {
        return;
    }
    m_version = version;
    m_parts.Create(count);
    for (unsigned int i = 0; i < count; ++i) {
        m_parts[i] = static_cast<unsigned int>(fields[i].ToUnsigned(10)) & mask;
    }
}

CZRB_String CZRB_IpAddress::ToString() const {
    CZRB_String text;
    const CZRB_Uint32Vector& p = m_parts;
    if (m_version == VERSION_IPV4) {
        text.Format("%d.%d.%d.%d", static_cast<int>(p[0]), static_cast<int>(p[1]),
                    static_cast<int>(p[2]), static_cast<int>(p[3]));
    } else if (m_version == VERSION_IPV6) {
        text.Format("%04X:%04X:%04X:%04X:%04X:%04X:%04X:%04X", p[0], p[1], p[2], p[3], p[4], p[5],
                    p[6], p[7]);
    }
    return text;
}

unsigned char CZRB_IpAddress::operator==(const CZRB_IpAddress& other) const {
    if (m_version != other.m_version || m_parts.GetLength() != other.m_parts.GetLength()) {
        return 0;
    }
    for (unsigned int i = 0; i < m_parts.GetLength(); ++i) {
        if (m_parts[i] != other.m_parts[i]) {
            return 0;
        }
    }
    return 1;
}

unsigned char CZRB_IpAddress::operator!=(const CZRB_IpAddress& other) const {
    return *this == other ? 0 : 1;
}

unsigned char CZRB_IpAddress::GetDigit(unsigned int index) const {
    return index < m_parts.GetLength() ? static_cast<unsigned char>(m_parts[index] & 0xFFU) : 0;
}

void CZRB_IpAddress::SetDigit(unsigned int index, unsigned char value) {
    if (index < m_parts.GetLength()) {
        m_parts[index] = value;
    }
}

CZRB_Buffer& operator<<(CZRB_Buffer& buffer, const CZRB_IpAddress& address) {
    buffer << static_cast<unsigned short>(address.m_version);
    buffer << address.m_parts.GetLength();
    for (unsigned int i = 0; i < address.m_parts.GetLength(); ++i) {
        buffer << address.m_parts[i];
    }
    return buffer;
}

CZRB_Buffer& operator>>(CZRB_Buffer& buffer, CZRB_IpAddress& address) {
    address.SetToInvalid();
    unsigned short version = 0;
    buffer >> version;
    if (version == CZRB_IpAddress::VERSION_INVALID) {
        return buffer;
    }
    if (version != CZRB_IpAddress::VERSION_IPV4 && version != CZRB_IpAddress::VERSION_IPV6) {
        throw CZRB_Exception(32, &buffer, 0);
    }
    // The version is set before the count is read, so a record cut short keeps it.
    address.m_version = version;
    unsigned int count = 0;
    buffer >> count;
    // The announced parts must be in the stream before anything is allocated for them.
    const unsigned __int64 position = buffer.GetAbsPosition();
    const unsigned __int64 size = buffer.GetSize();
    if (position > size || (size - position) / 4 < count) {
        throw CZRB_Exception(3, &buffer, 0);
    }
    if (address.m_parts.GetLength() != count) {
        address.m_parts.Create(count);
    }
    for (unsigned int i = 0; i < count; ++i) {
        buffer >> address.m_parts[i];
    }
    return buffer;
}

CZRB_IpAddressVector::~CZRB_IpAddressVector() {}
CZRB_IpAddressList::~CZRB_IpAddressList() {}
