// IP address text from outside: the version and parts are those of the documented split (a
// colon anywhere: eight fields; else four dot-separated fields; each a decimal conversion
// kept to 16 or 8 bits), printing gives the fixed forms, an IPv4 address or an IPv6 address
// of small groups reads back from its text, and every address survives the stream record.
#include "CZRB_IpAddress.h"
#include "CZRB_MemoryBuffer.h"
#include "FuzzSupport.h"
#include "TextModel.h"

namespace {

// The version and parts the text must give; version 65535 without parts when invalid.
unsigned int ModelParse(const std::string& text, std::vector<unsigned int>& parts) {
    const bool colon = text.find(':') != std::string::npos;
    const std::vector<std::string> fields = SplitFields(text, colon ? ':' : '.');
    if (fields.size() != (colon ? 8U : 4U)) {
        return CZRB_IpAddress::VERSION_INVALID;
    }
    for (const std::string& field : fields) {
        const unsigned long long value = std::strtoull(field.c_str(), nullptr, 10);
        parts.push_back(static_cast<unsigned int>(value & (colon ? 0xFFFFU : 0xFFU)));
    }
    return colon ? CZRB_IpAddress::VERSION_IPV6 : CZRB_IpAddress::VERSION_IPV4;
}

std::string ModelText(unsigned int version, const std::vector<unsigned int>& parts) {
    std::string text;
    char part[16];
    for (std::size_t i = 0; i < parts.size(); ++i) {
        std::snprintf(part, sizeof(part), version == CZRB_IpAddress::VERSION_IPV4 ? "%u" : "%04X",
                      parts[i]);
        text += (i == 0 ? "" : version == CZRB_IpAddress::VERSION_IPV4 ? "." : ":");
        text += part;
    }
    return text;
}

void CheckStreamRecord(const CZRB_IpAddress& address, bool invalid, unsigned int blockSize) {
    CZRB_MemoryBuffer buffer(blockSize);
    buffer << address;
    buffer.ToStart();
    CZRB_IpAddress back(CZRB_String("1.2.3.4"));
    buffer >> back;
    FUZZ_CHECK(back == address);
    // Kept as shipped: the part count written behind an invalid version stays unread.
    FUZZ_CHECK(buffer.GetAbsPosition() + (invalid ? 4 : 0) == buffer.GetSize());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const unsigned int blockSize = input.TakeInRange(1, 16);
    const unsigned int digitIndex = input.TakeInRange(0, 9);
    const unsigned char digitValue = input.Take<unsigned char>();
    const std::string text = input.TakeRest();

    CZRB_IpAddress address(ToLib(text));
    std::vector<unsigned int> parts;
    const unsigned int version = ModelParse(text, parts);
    const std::string printed = FromLib(address.ToString());
    FUZZ_CHECK(printed == ModelText(version, parts));
    for (unsigned int i = 0; i < 10; ++i) {
        FUZZ_CHECK(address.GetDigit(i) == (i < parts.size() ? (parts[i] & 0xFFU) : 0U));
    }

    // IPv6 text is written in hexadecimal but read as decimal: only groups below 10 agree.
    bool readsBack = true;
    for (const unsigned int part : parts) {
        readsBack = readsBack && (version != CZRB_IpAddress::VERSION_IPV6 || part < 10);
    }
    FUZZ_CHECK(!readsBack || CZRB_IpAddress(ToLib(printed)) == address);
    const bool invalid = version == CZRB_IpAddress::VERSION_INVALID;
    CheckStreamRecord(address, invalid, blockSize);

    CZRB_IpAddress changed(address);
    changed.SetDigit(digitIndex, digitValue);
    FUZZ_CHECK(changed.GetDigit(digitIndex) == (digitIndex < parts.size() ? digitValue : 0));
    FUZZ_CHECK((changed == address) ==
               (digitIndex >= parts.size() || parts[digitIndex] == digitValue));
    CheckStreamRecord(changed, invalid, blockSize);
    return 0;
}
