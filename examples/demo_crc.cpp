#include "demo_sections.h"

#include "CZRB_Crc.h"
#include "CZRB_Exception.h"

#include <cstdio>
#include <cstring>

namespace {

// Prints the CRC of `text` under one catalogue entry, in the width of that entry.
void PrintCrc(CZRB_Crc::t_StdCrc standard, const char* text) {
    unsigned int count = 0;
    const CZRB_Crc::t_CatalogueEntry* rows = CZRB_Crc::GetCatalogue(&count);
    const CZRB_Crc::t_CatalogueEntry* row = rows;
    while (row->standard != standard) {
        ++row;
    }
    const CZRB_Crc crc(standard);
    const auto* data = reinterpret_cast<const unsigned char*>(text);
    const unsigned __int64 length = std::strlen(text);
    unsigned __int64 value = 0;
    switch (row->width) {
    case 8: {
        unsigned char r = 0;
        crc.Compute(data, length, &r, 0);
        value = r;
        break;
    }
    case 16: {
        unsigned short r = 0;
        crc.Compute(data, length, &r, 0);
        value = r;
        break;
    }
    case 32: {
        unsigned int r = 0;
        crc.Compute(data, length, &r, 0);
        value = r;
        break;
    }
    default:
        crc.Compute(data, length, &value, 0);
        break;
    }
    std::printf("  %-28s 0x%0*llX\n", row->name, static_cast<int>(row->width / 4), value);
}

} // namespace

void DemoCrc() {
    std::puts("== Checksums: CRC catalogue ==");
    const CZRB_Crc::t_StdCrc shown[] = {CZRB_Crc::CRC_8_SMBUS, CZRB_Crc::CRC_16_MODBUS,
                                        CZRB_Crc::XMODEM,      CZRB_Crc::CRC_32_ISO_HDLC,
                                        CZRB_Crc::CRC_32C,     CZRB_Crc::CRC_64_XZ};
    const char* texts[] = {"123456789", "The quick brown fox jumps over the lazy dog"};
    for (const char* text : texts) {
        std::printf("\"%s\":\n", text);
        for (CZRB_Crc::t_StdCrc standard : shown) {
            PrintCrc(standard, text);
        }
    }

    // MIL-STD-1760: each word rotated by its distance from the end, then XORed.
    const unsigned short words[] = {0x0001, 0x0001};
    unsigned short sum = 0;
    CZRB_Crc(CZRB_Crc::MIL_STD_1760).Compute(words, 2, &sum, 0);
    std::printf("MIL-STD-1760 of the words 0x0001 0x0001: 0x%04X\n", sum);

    try {
        CZRB_Crc unknown(static_cast<CZRB_Crc::t_StdCrc>(0x2000));
    } catch (const CZRB_Exception& e) {
        std::printf("selector 0x2000 is not in the catalogue: exception code %u\n", e.code);
    }
}
