// CRC: a catalogue CRC over a buffer, the same value computed piece by piece, a CRC given by
// its parameters, and a look at the catalogue.
#include <CZRB_Crc.h>

#include <cstdio>
#include <cstring>

int main() {
    unsigned char text[] = "123456789";
    const unsigned __int64 length = std::strlen(reinterpret_cast<char*>(text));

    CZRB_Crc crc32(CZRB_Crc::CRC_32_ISO_HDLC);
    unsigned int value = 0;
    crc32.Compute(text, length, &value, 0);
    std::printf("CRC-32/ISO-HDLC of \"123456789\": 0x%08X\n", value);

    // Data in pieces: Begin, Update for each piece, Finish. Exact for every CRC.
    unsigned __int64 reg = crc32.Begin();
    reg = crc32.Update(reg, text, 4);
    reg = crc32.Update(reg, text + 4, length - 4);
    std::printf("in two pieces: 0x%08llX\n", crc32.Finish(reg));

    // Any CRC of 8 to 64 bits from its five parameters: here CRC-16/XMODEM.
    CZRB_Crc xmodem(CZRB_Crc::CRC_TYPE_16, 0x1021, 0x0000, 0, 0, 0x0000);
    unsigned short check = 0;
    xmodem.ComputeCheckValue(&check);
    std::printf("CRC-16 poly 0x1021: check value 0x%04X\n", check);

    unsigned int count = 0;
    const CZRB_Crc::t_CatalogueEntry* catalogue = CZRB_Crc::GetCatalogue(&count);
    std::printf("%u catalogue entries, the first %s (%u bits, check 0x%02llX)\n", count,
                catalogue[0].name, catalogue[0].width, catalogue[0].check);
    try {
        CZRB_Crc unknown(static_cast<CZRB_Crc::t_StdCrc>(0x2000));
    } catch (const CZRB_Exception& e) {
        std::printf("selector 0x2000 throws code %u\n", e.code);
    }
    return 0;
}
