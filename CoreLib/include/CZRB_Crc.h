/// @file
/// CZRB_Crc: a parametric, table-driven CRC engine of 8, 16, 32 or 64 bits with a built-in
/// catalogue of 97 standard CRCs and the MIL-STD-1760 rotate-and-XOR checksum.
#ifndef CZRB_CRC_H
#define CZRB_CRC_H

#include "CZRB_Object.h"
#include "CZRB_Uint8Vector.h"

#include <memory>

namespace ZRB_CrcKernel {
struct t_Plan;
}

/// A parametric, table-driven CRC engine of 8, 16, 32 or 64 bits with a built-in catalogue
/// of 97 standard CRCs and the MIL-STD-1760 rotate-and-XOR checksum.
///
/// A configuration sets the five parameters of the usual parametric CRC model (polynomial in
/// normal form without its top bit, initial value in normal form, input and output reflection,
/// final XOR) and builds one 256-entry most-significant-bit-first table of the register width
/// plus a 256-byte bit-reversal table. They define every result: the byte-at-a-time table step,
/// each input byte of a reflected CRC reversed through the bit-reversal table, the output once
/// per call.
///
/// Speed: each configuration also derives folding constants from its polynomial (about 250
/// bytes, shared by copies), and Compute runs the fastest kernel the processor offers, chosen
/// at run time: carry-less multiplication in 512-, 256- or 128-bit lanes (AVX-512, AVX2 or
/// SSE4.1 with VPCLMULQDQ/PCLMULQDQ) for every width and polynomial, else slicing-by-16 tables
/// (16 KiB, 32 KiB for 64 bits, built only on processors that need them). Results are
/// bit-identical to the byte-at-a-time step for every configuration, length, alignment and
/// continueFlag.
///
/// Failures throw CZRB_Exception with the engine as object and detail 0: code 2 for a selector
/// outside the catalogue, code 32 for a computation the configuration cannot serve. Compute
/// only reads the engine, so one configured engine may serve several threads at once.
class LZRB_API CZRB_Crc : public CZRB_Object {
public:
    /// Register width selector (CRC_TYPE_8 to CRC_TYPE_64: 8 to 64 bits); 0 means not
    /// configured.
    enum t_CrcType : int { CRC_TYPE_8 = 1, CRC_TYPE_16 = 2, CRC_TYPE_32 = 3, CRC_TYPE_64 = 4 };

    /// The catalogue, grouped by width: 0x0000.. 8-bit, 0x1000.. 16-bit, 0x3000.. 32-bit,
    /// 0x5000.. 64-bit. Several selectors are aliases with identical parameters. Each comment
    /// is the published name of the parameter set.
    enum t_StdCrc : int {
        CRC_8_SMBUS = 0x0000,      ///< CRC-8 (SMBUS)
        CRC_8_AES = 0x0001,        ///< CRC-8/AES (TECH-3250)
        CRC_8_AUTOSAR = 0x0002,    ///< CRC-8/AUTOSAR
        CRC_8_BLUETOOTH = 0x0003,  ///< CRC-8/BLUETOOTH
        CRC_8_CDMA2000 = 0x0004,   ///< CRC-8/CDMA2000
        CRC_8_DARC = 0x0005,       ///< CRC-8/DARC
        CRC_8_DOW_CRC = 0x0006,    ///< CRC-8/DOW-CRC (MAXIM-DOW)
        CRC_8_DVB_S2 = 0x0007,     ///< CRC-8/DVB-S2
        CRC_8_EBU = 0x0008,        ///< CRC-8/EBU (TECH-3250)
        CRC_8_GSM_A = 0x0009,      ///< CRC-8/GSM-A
        CRC_8_GSM_B = 0x000A,      ///< CRC-8/GSM-B
        CRC_8_I_CODE = 0x000B,     ///< CRC-8/I-CODE
        CRC_8_ITU = 0x000C,        ///< CRC-8/ITU (I-432-1)
        CRC_8_LTE = 0x000D,        ///< CRC-8/LTE
        CRC_8_MAXIM = 0x000E,      ///< CRC-8/MAXIM (MAXIM-DOW)
        CRC_8_OPENSAFETY = 0x000F, ///< CRC-8/OPENSAFETY
        CRC_8_ROHC = 0x0010,       ///< CRC-8/ROHC
        CRC_8_SAE_J1850 = 0x0011,  ///< CRC-8/SAE-J1850
        CRC_8_WCDMA = 0x0012,      ///< CRC-8/WCDMA

        CRC_16 = 0x1000,                   ///< CRC-16 (ARC); CRC_16_ARC is the next ARC row
        CRC_A = 0x1001,                    ///< CRC-A (ISO-IEC-14443-3-A)
        CRC_16_ACORN = 0x1002,             ///< CRC-16/ACORN (XMODEM)
        CRC_16_ARC = 0x1003,               ///< CRC-16/ARC
        CRC_16_AUG_CCITT = 0x1004,         ///< CRC-16/AUG-CCITT (SPI-FUJITSU)
        CRC_16_BUYPASS = 0x1005,           ///< CRC-16/BUYPASS (UMTS)
        CRC_16_CCITT = 0x1006,             ///< CRC-16/CCITT (KERMIT)
        KERMIT = 0x1007,                   ///< KERMIT alias
        CRC_16_CCITT_FALSE = 0x1008,       ///< CRC-16/CCITT-FALSE (IBM-3740)
        CRC_16_CCITT_TRUE = 0x1009,        ///< CRC-16/CCITT-TRUE (KERMIT)
        CRC_16_CDMA2000 = 0x100A,          ///< CRC-16/CDMA2000
        CRC_16_CMS = 0x100B,               ///< CRC-16/CMS
        CRC_B = 0x100C,                    ///< CRC-B (X-25)
        CRC_16_DARC = 0x100D,              ///< CRC-16/DARC (GENIBUS)
        CRC_16_DDS_110 = 0x100E,           ///< CRC-16/DDS-110
        CRC_16_DECT_R = 0x100F,            ///< CRC-16/DECT-R
        CRC_16_DECT_X = 0x1010,            ///< CRC-16/DECT-X
        CRC_16_DNP = 0x1011,               ///< CRC-16/DNP
        CRC_16_EN_13757 = 0x1012,          ///< CRC-16/EN-13757
        CRC_16_EPC = 0x1013,               ///< CRC-16/EPC (GENIBUS)
        CRC_16_EPC_C1G2 = 0x1014,          ///< CRC-16/EPC-C1G2 (GENIBUS)
        CRC_16_GSM = 0x1015,               ///< CRC-16/GSM
        CRC_IBM = 0x1016,                  ///< CRC-IBM (ARC)
        CRC_16_IBM_SDLC = 0x1017,          ///< CRC-16/IBM-SDLC (X-25)
        CRC_16_I_CODE = 0x1018,            ///< CRC-16/I-CODE (GENIBUS)
        CRC_16_IEC_61158_2 = 0x1019,       ///< CRC-16/IEC-61158-2 (PROFIBUS)
        CRC_16_ISO_HDLC = 0x101A,          ///< CRC-16/ISO-HDLC (X-25)
        CRC_16_ISO_IEC_14443_3_A = 0x101B, ///< CRC-16/ISO-IEC-14443-3-A
        CRC_16_KERMIT = 0x101C,            ///< CRC-16/KERMIT
        CRC_16_LHA = 0x101D,               ///< CRC-16/LHA (ARC)
        CRC_16_LJ1200 = 0x101E,            ///< CRC-16/LJ1200
        CRC_16_LTE = 0x101F,               ///< CRC-16/LTE (XMODEM)
        CRC_16_MAXIM = 0x1020,             ///< CRC-16/MAXIM
        CRC_16_MCRF4XX = 0x1021,           ///< CRC-16/MCRF4XX
        CRC_16_MODBUS = 0x1022,            ///< CRC-16/MODBUS
        CRC_16_OPENSAFETY_A = 0x1023,      ///< CRC-16/OPENSAFETY-A
        CRC_16_OPENSAFETY_B = 0x1024,      ///< CRC-16/OPENSAFETY-B
        CRC_16_PROFIBUS = 0x1025,          ///< CRC-16/PROFIBUS
        R_CRC_16 = 0x1026,                 ///< R-CRC-16 (DECT-R)
        CRC_16_RIELLO = 0x1027,            ///< CRC-16/RIELLO
        CRC_16_SPI_FUJITSU = 0x1028,       ///< CRC-16/SPI-FUJITSU
        CRC_16_T10_DIF = 0x1029,           ///< CRC-16/T10-DIF
        CRC_16_TELEDISK = 0x102A,          ///< CRC-16/TELEDISK
        CRC_16_TMS37157 = 0x102B,          ///< CRC-16/TMS37157
        CRC_16_UMTS = 0x102C,              ///< CRC-16/UMTS
        CRC_16_USB = 0x102D,               ///< CRC-16/USB
        CRC_16_VERIFONE = 0x102E,          ///< CRC-16/VERIFONE (UMTS)
        X_CRC_16 = 0x102F,                 ///< X-CRC-16 (DECT-X)
        X_25 = 0x1030,                     ///< X-25
        XMODEM = 0x1031,                   ///< XMODEM
        ZMODEM = 0x1032,                   ///< ZMODEM (XMODEM)
        MIL_STD_1760 = 0x1033,             ///< MIL-STD-1760 (rotate-XOR, no table)
        CRC_16_AUTOSAR = 0x1034,           ///< CRC-16/AUTOSAR (IBM-3740)

        CRC_32_ISO_HDLC = 0x3000,   ///< CRC-32 (ISO-HDLC)
        CRC_32_ADCCP = 0x3001,      ///< CRC-32 alias (ADCCP)
        CRC_32_ALIAS = 0x3002,      ///< CRC-32 alias
        CRC_32_AUTOSAR = 0x3003,    ///< CRC-32/AUTOSAR
        CRC_32_BZIP2 = 0x3004,      ///< CRC-32/BZIP2 family
        CRC_32_AAL5 = 0x3005,       ///< CRC-32/BZIP2 alias (AAL5)
        CRC_32_DECT_B = 0x3006,     ///< CRC-32/BZIP2 alias (DECT-B)
        B_CRC_32 = 0x3007,          ///< CRC-32/BZIP2 alias (B-CRC-32)
        CRC_32C = 0x3008,           ///< CRC-32C (ISCSI)
        CRC_32_CASTAGNOLI = 0x3009, ///< CRC-32C alias (CASTAGNOLI)
        CRC_32_INTERLAKEN = 0x300A, ///< CRC-32C alias (INTERLAKEN)
        CRC_32_BASE91_C = 0x300B,   ///< CRC-32C alias (BASE91-C)
        CRC_32D = 0x300C,           ///< CRC-32D (BASE91-D)
        CRC_32_MPEG_2 = 0x300D,     ///< CRC-32/MPEG-2
        CRC_32_POSIX = 0x300E,      ///< CRC-32/POSIX (CKSUM)
        CKSUM = 0x300F,             ///< CKSUM alias
        CRC_32Q = 0x3010,           ///< CRC-32Q (AIXM)
        JAMCRC = 0x3011,            ///< JAMCRC
        XFER = 0x3012,              ///< XFER
        CKSUM_ALIAS = 0x3013,       ///< CKSUM alias (a second selector of the same name)

        CRC_64_ECMA_182 = 0x5000, ///< CRC-64 (ECMA-182)
        CRC_64_GO_ISO = 0x5001,   ///< CRC-64/GO-ISO
        CRC_64_WE = 0x5002,       ///< CRC-64/WE
        CRC_64_XZ = 0x5003,       ///< CRC-64/XZ
        CRC_64_GO_ECMA = 0x5004   ///< CRC-64/XZ alias (GO-ECMA)
    };

    /// One row of the catalogue. MIL-STD-1760 has a row of its own with width 16 and every
    /// parameter and the check value 0: it is not a polynomial CRC.
    struct t_CatalogueEntry {
        t_StdCrc standard;             ///< the selector of the row
        unsigned int width;            ///< register width in bits
        unsigned __int64 polynomial;   ///< normal form without its top bit
        unsigned __int64 seed;         ///< initial register value in normal form
        unsigned char inputReflected;  ///< 1 when each input byte is reflected
        unsigned char outputReflected; ///< 1 when the result is reflected
        unsigned __int64 finalXor;     ///< XORed into the result last
        unsigned __int64 check;        ///< CRC of the nine bytes "123456789"
        const char* name;              ///< published name of the parameter set
    };

    /// Not configured: type 0, table-ready 0, width 0, all parameters 0, no tables; every
    /// Compute throws 32.
    CZRB_Crc();
    /// Configures the engine exactly as CreatePolynomial does.
    CZRB_Crc(t_CrcType type, unsigned __int64 polynomial, unsigned __int64 seed,
             unsigned char inputReflected, unsigned char outputReflected,
             unsigned __int64 finalXor);
    /// Starts unconfigured, then calls Create; a selector outside the catalogue throws 2.
    CZRB_Crc(t_StdCrc standard);
    /// Deep copy: parameters, bit-reversal table and a private copy of the CRC table.
    CZRB_Crc(const CZRB_Crc& other);
    /// Deep copy as the copy constructor; returns the target.
    CZRB_Crc& operator=(const CZRB_Crc& other);
    /// Frees whatever table exists.
    virtual ~CZRB_Crc();

    /// Frees all tables, stores the six parameters unchecked (only the low width bits of
    /// polynomial, seed and XOR take effect), sets table-ready, takes the width from the type
    /// and builds its table and the bit-reversal table. Kept as shipped: a type outside 1..4 is
    /// not rejected; the width stays as it was, no CRC table is built and every Compute
    /// then throws 32.
    void CreatePolynomial(t_CrcType type, unsigned __int64 polynomial, unsigned __int64 seed,
                          unsigned char inputReflected, unsigned char outputReflected,
                          unsigned __int64 finalXor);
    /// Records the selector, then configures the catalogue row as CreatePolynomial would.
    /// Throws 2 for a selector outside the catalogue, after recording it. MIL_STD_1760 only
    /// records the selector and sets the type to 16 bits: kept as shipped, any table and
    /// parameters already in place stay in force, so a 16-bit CRC configured before it is
    /// still the one the 16-bit Compute runs.
    void Create(t_StdCrc standard);

    /// 8-bit CRC of `length` bytes into *crc; with `continueFlag` non-zero the register starts
    /// from *crc as it is (no undoing of output reflection or final XOR). Throws 32 without a
    /// table-driven configuration or without an 8-bit table. As in every Compute form, *crc is
    /// written only on success.
    void Compute(const unsigned char* data, unsigned __int64 length, unsigned char* crc,
                 unsigned char continueFlag) const;
    /// 16-bit CRC of `length` bytes. Without a table-driven configuration but with
    /// MIL_STD_1760 selected, runs the MIL-STD-1760 checksum over length / 2 words in memory
    /// order (an odd last byte is ignored). Throws 32 when neither applies or no 16-bit table
    /// exists.
    void Compute(const unsigned char* data, unsigned __int64 length, unsigned short* crc,
                 unsigned char continueFlag) const;
    /// 32-bit CRC of `length` bytes; throws 32 when not configured for 32 bits.
    void Compute(const unsigned char* data, unsigned __int64 length, unsigned int* crc,
                 unsigned char continueFlag) const;
    /// 64-bit CRC of `length` bytes; throws 32 when not configured for 64 bits.
    void Compute(const unsigned char* data, unsigned __int64 length, unsigned __int64* crc,
                 unsigned char continueFlag) const;
    /// 16-bit result over `wordCount` 16-bit words taken as 2 * wordCount bytes in memory
    /// order; the same as the 16-bit byte-buffer form, MIL-STD-1760 included.
    void Compute(const unsigned short* words, unsigned __int64 wordCount, unsigned short* crc,
                 unsigned char continueFlag) const;

    /// 8-bit CRC of the vector's bytes; as the byte-buffer form.
    void Compute(const CZRB_Uint8Vector& data, unsigned char* crc,
                 unsigned char continueFlag) const;
    /// 16-bit CRC of the vector's bytes; throws 32 without a 16-bit table (this form never
    /// runs MIL-STD-1760).
    void Compute(const CZRB_Uint8Vector& data, unsigned short* crc,
                 unsigned char continueFlag) const;
    /// 32-bit CRC of the vector's bytes; as the byte-buffer form.
    void Compute(const CZRB_Uint8Vector& data, unsigned int* crc, unsigned char continueFlag) const;
    /// 64-bit CRC of the vector's bytes; as the byte-buffer form.
    void Compute(const CZRB_Uint8Vector& data, unsigned __int64* crc,
                 unsigned char continueFlag) const;

    /// The check value: the 8-bit CRC of the nine bytes "123456789" through the vector form;
    /// throws 32 as that form does.
    void ComputeCheckValue(unsigned char* crc) const;
    /// The 16-bit check value; throws 32 without a 16-bit table (also for MIL-STD-1760).
    void ComputeCheckValue(unsigned short* crc) const;
    /// The 32-bit check value; throws 32 without a 32-bit table.
    void ComputeCheckValue(unsigned int* crc) const;
    /// The 64-bit check value; throws 32 without a 64-bit table.
    void ComputeCheckValue(unsigned __int64* crc) const;

    /// @name Incremental form
    /// For data that arrives in pieces (a file read block by block):
    ///
    ///     unsigned __int64 reg = crc.Begin();
    ///     while (more) reg = crc.Update(reg, block, blockLength);
    ///     unsigned __int64 value = crc.Finish(reg); // == Compute over all the bytes at once
    ///
    /// Unlike chaining with continueFlag, this is exact for every configuration, output
    /// reflection and final XOR included. The register width is the configured one. All three
    /// throw 32 for an engine that is unconfigured or was given a type outside 1..4;
    /// MIL-STD-1760 (when no table-driven CRC is in force) is served exactly, pieces of odd
    /// length included.
    /// @{

    /// The start register: the seed's low width bits (0 for MIL-STD-1760).
    unsigned __int64 Begin() const;
    /// The register after `length` more bytes at `data`; `reg` comes from Begin or Update.
    unsigned __int64 Update(unsigned __int64 reg, const void* data, unsigned __int64 length) const;
    /// The CRC of everything passed to Update: output reflection and final XOR applied.
    unsigned __int64 Finish(unsigned __int64 reg) const;
    /// @}

    /// The polynomial as configured (normal form, top bit implicit), all 64 bits as stored.
    unsigned __int64 GetPolynomial() const;
    /// The initial register value as configured, all 64 bits as stored.
    unsigned __int64 GetSeed() const;
    /// The final XOR value as configured, all 64 bits as stored.
    unsigned __int64 GetFinalXor() const;
    /// The input reflection flag as configured (any non-zero value means reflected).
    unsigned char IsInputReflected() const;
    /// Whether the output is reflected (the name is spelled so by design).
    unsigned char IsOuputReflected() const;

    /// The catalogue rows in selector order; *count receives their number (97).
    static const t_CatalogueEntry* GetCatalogue(unsigned int* count);

protected:
    /// Builds the table of the configured type; builds nothing for a type outside 1..4.
    void BuildCrcTable();
    /// Builds the 256-entry table of 8 bits from the polynomial.
    void BuildCrc8Table();
    /// Builds the 256-entry table of 16 bits from the polynomial.
    void BuildCrc16Table();
    /// Builds the 256-entry table of 32 bits from the polynomial.
    void BuildCrc32Table();
    /// Builds the 256-entry table of 64 bits from the polynomial.
    void BuildCrc64Table();
    /// Entry i is i with its eight bits in reverse order.
    void BuildByteInversionTable();
    /// Frees the four tables.
    void DestroyCrcTables();
    /// Copies every parameter and the bit-reversal table, and gives this engine its own copy
    /// of each table that `other` holds.
    void DataCopy(const CZRB_Crc& other);

    /// The table path of 8 bits: throws 32 when the 8-bit table is missing.
    void ComputePolynomial(const unsigned char* data, unsigned __int64 length, unsigned char* crc,
                           unsigned char continueFlag) const;
    /// The table path of 16 bits: throws 32 when the 16-bit table is missing.
    void ComputePolynomial(const unsigned char* data, unsigned __int64 length, unsigned short* crc,
                           unsigned char continueFlag) const;
    /// The table path of 32 bits: throws 32 when the 32-bit table is missing.
    void ComputePolynomial(const unsigned char* data, unsigned __int64 length, unsigned int* crc,
                           unsigned char continueFlag) const;
    /// The table path of 64 bits: throws 32 when the 64-bit table is missing.
    void ComputePolynomial(const unsigned char* data, unsigned __int64 length,
                           unsigned __int64* crc, unsigned char continueFlag) const;
    /// The table path of 8 bits over a byte vector.
    void ComputePolynomial(const CZRB_Uint8Vector& data, unsigned char* crc,
                           unsigned char continueFlag) const;
    /// The table path of 16 bits over a byte vector.
    void ComputePolynomial(const CZRB_Uint8Vector& data, unsigned short* crc,
                           unsigned char continueFlag) const;
    /// The table path of 32 bits over a byte vector.
    void ComputePolynomial(const CZRB_Uint8Vector& data, unsigned int* crc,
                           unsigned char continueFlag) const;
    /// The table path of 64 bits over a byte vector.
    void ComputePolynomial(const CZRB_Uint8Vector& data, unsigned __int64* crc,
                           unsigned char continueFlag) const;
    /// XOR of the words, the k-th from the end rotated left by k modulo 16; starts from 0
    /// unless `continueFlag` is set.
    void Compute_MilStd1760(const unsigned char* data, unsigned __int64 wordCount,
                            unsigned short* crc, unsigned char continueFlag) const;

private:
    /// The shared table path: start register, byte kernel, output reflection, final XOR.
    template <typename Register>
    void ComputeWithTable(const Register* table, const unsigned char* data, unsigned __int64 length,
                          Register* crc, unsigned char continueFlag) const;
    /// The register width the incremental form runs: the configured table's width, 0 for
    /// MIL-STD-1760; throws 32 without either.
    unsigned int IncrementalWidth() const;
    /// Throws 32 unless a table-driven configuration is in place.
    void RequireTableReady() const;
    /// The nine bytes "123456789" through the vector form of Compute.
    template <typename Register>
    void CheckValue(Register* crc) const;

    t_CrcType m_type;
    t_StdCrc m_standard;
    unsigned int m_tableReady;
    unsigned int m_width;
    unsigned __int64 m_polynomial;
    unsigned char m_inputReflected;
    unsigned char m_outputReflected;
    unsigned __int64 m_seed;
    unsigned __int64 m_finalXor;
    unsigned char m_byteInversion[256];
    std::unique_ptr<unsigned char[]> m_table8;
    std::unique_ptr<unsigned short[]> m_table16;
    std::unique_ptr<unsigned int[]> m_table32;
    std::unique_ptr<unsigned __int64[]> m_table64;
    /// Folding constants (and, where the processor lacks carry-less multiplication, slicing
    /// tables) of the table-driven configuration; immutable, so copies share it.
    std::shared_ptr<const ZRB_CrcKernel::t_Plan> m_plan;
};

#endif
