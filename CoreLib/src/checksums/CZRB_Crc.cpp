#include "CZRB_Crc.h"

#include "CZRB_Exception.h"
#include "checksums/CrcKernel.h"

#include <cstring>

namespace {

// The low `width` bits set (width 1..64).
unsigned __int64 WidthMask(unsigned int width) {
    return width >= 64 ? ~0ULL : (1ULL << width) - 1;
}

// Fills the 256 entries of the most-significant-bit-first table of the width of Register:
// entry i is the register that starts as i in its top byte after eight shifts, each XORing the
// polynomial after a set top bit shifted out. That is linear in i, so the eight one-bit entries
// are shifted out in full and every other entry is the XOR of two smaller ones.
template <typename Register>
std::unique_ptr<Register[]> MakeTable(unsigned __int64 polynomial) {
    constexpr unsigned int width = sizeof(Register) * 8;
    const unsigned __int64 mask = WidthMask(width);
    const unsigned __int64 top = 1ULL << (width - 1);
    std::unique_ptr<Register[]> table(new Register[256]);
    table[0] = 0;
    for (unsigned int bit = 1; bit < 256; bit <<= 1) {
        unsigned __int64 r = static_cast<unsigned __int64>(bit) << (width - 8);
        for (int step = 0; step < 8; ++step) {
            r = (r & top) != 0 ? (r << 1) ^ polynomial : r << 1;
            r &= mask;
        }
        table[bit] = static_cast<Register>(r);
    }
    for (unsigned int i = 3; i < 256; ++i) {
        const unsigned int lowest = i & (0U - i);
        table[i] = static_cast<Register>(table[lowest] ^ table[i ^ lowest]);
    }
    return table;
}

// A private copy of a 256-entry table, or null for a missing one.
template <typename Register>
std::unique_ptr<Register[]> CloneTable(const std::unique_ptr<Register[]>& source) {
    if (!source) {
        return nullptr;
    }
    std::unique_ptr<Register[]> copy(new Register[256]);
    std::memcpy(copy.get(), source.get(), 256 * sizeof(Register));
    return copy;
}

// MIL-STD-1760 registers of the incremental form: the checksum in the low 16 bits, and a
// byte left over from an odd-length piece in bits 24..31 with bit 16 marking it present.
constexpr unsigned __int64 kMilPending = 1ULL << 16;

// Output reflection over the full register width.
template <typename Register>
Register ReflectRegister(Register r) {
    return static_cast<Register>(ZRB_CrcKernel::ReflectLow(r, sizeof(Register) * 8));
}

} // namespace

CZRB_Crc::CZRB_Crc()
    : m_type(static_cast<t_CrcType>(0)), m_standard(static_cast<t_StdCrc>(0)), m_tableReady(0),
      m_width(0), m_polynomial(0), m_inputReflected(0), m_outputReflected(0), m_seed(0),
      m_finalXor(0), m_byteInversion{} {}

CZRB_Crc::CZRB_Crc(t_CrcType type, unsigned __int64 polynomial, unsigned __int64 seed,
                   unsigned char inputReflected, unsigned char outputReflected,
                   unsigned __int64 finalXor)
    : CZRB_Crc() {
    CreatePolynomial(type, polynomial, seed, inputReflected, outputReflected, finalXor);
}

CZRB_Crc::CZRB_Crc(t_StdCrc standard) : CZRB_Crc() {
    Create(standard);
}

CZRB_Crc::CZRB_Crc(const CZRB_Crc& other) : CZRB_Crc() {
    DataCopy(other);
}

CZRB_Crc& CZRB_Crc::operator=(const CZRB_Crc& other) {
    DataCopy(other);
    return *this;
}

CZRB_Crc::~CZRB_Crc() = default;

void CZRB_Crc::CreatePolynomial(t_CrcType type, unsigned __int64 polynomial, unsigned __int64 seed,
                                unsigned char inputReflected, unsigned char outputReflected,
                                unsigned __int64 finalXor) {
    DestroyCrcTables();
    m_type = type;
    m_polynomial = polynomial;
    m_seed = seed;
    m_inputReflected = inputReflected;
    m_outputReflected = outputReflected;
    m_finalXor = finalXor;
    m_tableReady = 1;
    switch (type) {
    case CRC_TYPE_8:
        m_width = 8;
        break;
    case CRC_TYPE_16:
        m_width = 16;
        break;
    case CRC_TYPE_32:
        m_width = 32;
        break;
    case CRC_TYPE_64:
        m_width = 64;
        break;
    default: // kept as shipped: the width stays, and no CRC table is built below
        break;
    }
    BuildCrcTable();
    BuildByteInversionTable();
    if (m_type >= CRC_TYPE_8 && m_type <= CRC_TYPE_64) {
        m_plan = ZRB_CrcKernel::MakePlan(m_width, m_polynomial, m_seed, m_inputReflected != 0);
    }
}

void CZRB_Crc::Create(t_StdCrc standard) {
    m_standard = standard;
    if (standard == MIL_STD_1760) {
        m_type = CRC_TYPE_16;
        return;
    }
    unsigned int count = 0;
    const t_CatalogueEntry* rows = GetCatalogue(&count);
    const t_CatalogueEntry* row = nullptr;
    for (unsigned int i = 0; i < count && row == nullptr; ++i) {
        if (rows[i].standard == standard) {
            row = &rows[i];
        }
    }
    if (row == nullptr) {
        throw CZRB_Exception(2, this, 0);
    }
    const t_CrcType type = row->width == 8    ? CRC_TYPE_8
                           : row->width == 16 ? CRC_TYPE_16
                           : row->width == 32 ? CRC_TYPE_32
                                              : CRC_TYPE_64;
    CreatePolynomial(type, row->polynomial, row->seed, row->inputReflected, row->outputReflected,
                     row->finalXor);
}

void CZRB_Crc::RequireTableReady() const {
    if (m_tableReady == 0) {
        throw CZRB_Exception(32, this, 0);
    }
}

void CZRB_Crc::Compute(const unsigned char* data, unsigned __int64 length, unsigned char* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, length, crc, continueFlag);
}

void CZRB_Crc::Compute(const unsigned char* data, unsigned __int64 length, unsigned short* crc,
                       unsigned char continueFlag) const {
    if (m_tableReady != 0) {
        ComputePolynomial(data, length, crc, continueFlag);
    } else if (m_standard == MIL_STD_1760) {
        Compute_MilStd1760(data, length / 2, crc, continueFlag);
    } else {
        throw CZRB_Exception(32, this, 0);
    }
}

void CZRB_Crc::Compute(const unsigned char* data, unsigned __int64 length, unsigned int* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, length, crc, continueFlag);
}

void CZRB_Crc::Compute(const unsigned char* data, unsigned __int64 length, unsigned __int64* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, length, crc, continueFlag);
}

void CZRB_Crc::Compute(const unsigned short* words, unsigned __int64 wordCount, unsigned short* crc,
                       unsigned char continueFlag) const {
    Compute(reinterpret_cast<const unsigned char*>(words), 2 * wordCount, crc, continueFlag);
}

void CZRB_Crc::Compute(const CZRB_Uint8Vector& data, unsigned char* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, crc, continueFlag);
}

void CZRB_Crc::Compute(const CZRB_Uint8Vector& data, unsigned short* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, crc, continueFlag);
}

void CZRB_Crc::Compute(const CZRB_Uint8Vector& data, unsigned int* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, crc, continueFlag);
}

void CZRB_Crc::Compute(const CZRB_Uint8Vector& data, unsigned __int64* crc,
                       unsigned char continueFlag) const {
    RequireTableReady();
    ComputePolynomial(data, crc, continueFlag);
}

template <typename Register>
void CZRB_Crc::CheckValue(Register* crc) const {
    unsigned char digits[9] = {0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39};
    const CZRB_Uint8Vector data(digits, 9);
    Compute(data, crc, 0);
}

void CZRB_Crc::ComputeCheckValue(unsigned char* crc) const {
    CheckValue(crc);
}
void CZRB_Crc::ComputeCheckValue(unsigned short* crc) const {
    CheckValue(crc);
}
void CZRB_Crc::ComputeCheckValue(unsigned int* crc) const {
    CheckValue(crc);
}
void CZRB_Crc::ComputeCheckValue(unsigned __int64* crc) const {
    CheckValue(crc);
}

unsigned __int64 CZRB_Crc::GetPolynomial() const {
    return m_polynomial;
}
unsigned __int64 CZRB_Crc::GetSeed() const {
    return m_seed;
}
unsigned __int64 CZRB_Crc::GetFinalXor() const {
    return m_finalXor;
}
unsigned char CZRB_Crc::IsInputReflected() const {
    return m_inputReflected;
}
unsigned char CZRB_Crc::IsOuputReflected() const {
    return m_outputReflected;
}

void CZRB_Crc::BuildCrcTable() {
    switch (m_type) {
    case CRC_TYPE_8:
        BuildCrc8Table();
        break;
    case CRC_TYPE_16:
        BuildCrc16Table();
        break;
    case CRC_TYPE_32:
        BuildCrc32Table();
        break;
    case CRC_TYPE_64:
        BuildCrc64Table();
        break;
    default:
        break;
    }
}

void CZRB_Crc::BuildCrc8Table() {
    m_table8 = MakeTable<unsigned char>(m_polynomial);
}
void CZRB_Crc::BuildCrc16Table() {
    m_table16 = MakeTable<unsigned short>(m_polynomial);
}
void CZRB_Crc::BuildCrc32Table() {
    m_table32 = MakeTable<unsigned int>(m_polynomial);
}
void CZRB_Crc::BuildCrc64Table() {
    m_table64 = MakeTable<unsigned __int64>(m_polynomial);
}

void CZRB_Crc::BuildByteInversionTable() {
    for (unsigned int i = 0; i < 256; ++i) {
        m_byteInversion[i] = static_cast<unsigned char>(ZRB_CrcKernel::ReflectLow(i, 8));
    }
}

void CZRB_Crc::DestroyCrcTables() {
    m_table8.reset();
    m_table16.reset();
    m_table32.reset();
    m_table64.reset();
    m_plan.reset();
}

void CZRB_Crc::DataCopy(const CZRB_Crc& other) {
    if (this == &other) {
        return;
    }
    m_type = other.m_type;
    m_standard = other.m_standard;
    m_tableReady = other.m_tableReady;
    m_width = other.m_width;
    m_polynomial = other.m_polynomial;
    m_inputReflected = other.m_inputReflected;
    m_outputReflected = other.m_outputReflected;
    m_seed = other.m_seed;
    m_finalXor = other.m_finalXor;
    std::memcpy(m_byteInversion, other.m_byteInversion, sizeof(m_byteInversion));
    DestroyCrcTables();
    m_table8 = CloneTable(other.m_table8);
    m_table16 = CloneTable(other.m_table16);
    m_table32 = CloneTable(other.m_table32);
    m_table64 = CloneTable(other.m_table64);
    m_plan = other.m_plan;
}

template <typename Register>
void CZRB_Crc::ComputeWithTable(const Register* table, const unsigned char* data,
                                unsigned __int64 length, Register* crc,
                                unsigned char continueFlag) const {
    if (table == nullptr || !m_plan) {
        throw CZRB_Exception(32, this, 0);
    }
    // The kernels keep a reflected CRC's register reversed, so the start and the result are
    // reversed only where the register has to be taken as it stands (a carried value) or the
    // output reflection differs from the input's.
    const ZRB_CrcKernel::t_Plan& plan = *m_plan;
    const unsigned __int64 start =
        continueFlag != 0 ? ZRB_CrcKernel::KernelForm(plan, *crc) : plan.start;
    Register r = ZRB_CrcKernel::RunState(plan, table, m_byteInversion, static_cast<Register>(start),
                                         data, length);
    if ((m_outputReflected != 0) != plan.reflected) {
        r = ReflectRegister(r);
    }
    *crc = static_cast<Register>(r ^ (m_finalXor & WidthMask(sizeof(Register) * 8)));
}

void CZRB_Crc::ComputePolynomial(const unsigned char* data, unsigned __int64 length,
                                 unsigned char* crc, unsigned char continueFlag) const {
    ComputeWithTable(m_table8.get(), data, length, crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const unsigned char* data, unsigned __int64 length,
                                 unsigned short* crc, unsigned char continueFlag) const {
    ComputeWithTable(m_table16.get(), data, length, crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const unsigned char* data, unsigned __int64 length,
                                 unsigned int* crc, unsigned char continueFlag) const {
    ComputeWithTable(m_table32.get(), data, length, crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const unsigned char* data, unsigned __int64 length,
                                 unsigned __int64* crc, unsigned char continueFlag) const {
    ComputeWithTable(m_table64.get(), data, length, crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const CZRB_Uint8Vector& data, unsigned char* crc,
                                 unsigned char continueFlag) const {
    ComputeWithTable(m_table8.get(), data.GetBuf(), data.GetLength(), crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const CZRB_Uint8Vector& data, unsigned short* crc,
                                 unsigned char continueFlag) const {
    ComputeWithTable(m_table16.get(), data.GetBuf(), data.GetLength(), crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const CZRB_Uint8Vector& data, unsigned int* crc,
                                 unsigned char continueFlag) const {
    ComputeWithTable(m_table32.get(), data.GetBuf(), data.GetLength(), crc, continueFlag);
}

void CZRB_Crc::ComputePolynomial(const CZRB_Uint8Vector& data, unsigned __int64* crc,
                                 unsigned char continueFlag) const {
    ComputeWithTable(m_table64.get(), data.GetBuf(), data.GetLength(), crc, continueFlag);
}

void CZRB_Crc::Compute_MilStd1760(const unsigned char* data, unsigned __int64 wordCount,
                                  unsigned short* crc, unsigned char continueFlag) const {
    const unsigned short start = continueFlag != 0 ? *crc : 0;
    *crc = static_cast<unsigned short>(start ^ ZRB_CrcKernel::MilStd1760(data, wordCount));
}

unsigned int CZRB_Crc::IncrementalWidth() const {
    if (m_tableReady == 0) {
        if (m_standard == MIL_STD_1760) {
            return 0;
        }
        throw CZRB_Exception(32, this, 0);
    }
    const bool hasTable =
        (m_type == CRC_TYPE_8 && m_table8) || (m_type == CRC_TYPE_16 && m_table16) ||
        (m_type == CRC_TYPE_32 && m_table32) || (m_type == CRC_TYPE_64 && m_table64);
    if (!hasTable) {
        throw CZRB_Exception(32, this, 0);
    }
    return m_width;
}

unsigned __int64 CZRB_Crc::Begin() const {
    const unsigned int width = IncrementalWidth();
    return width == 0 ? 0 : m_seed & WidthMask(width);
}

unsigned __int64 CZRB_Crc::Update(unsigned __int64 reg, const void* data,
                                  unsigned __int64 length) const {
    const unsigned char* bytes = static_cast<const unsigned char*>(data);
    switch (IncrementalWidth()) {
    case 8:
        return ZRB_CrcKernel::Run(m_plan.get(), m_table8.get(), m_byteInversion, m_inputReflected,
                                  static_cast<unsigned char>(reg), bytes, length);
    case 16:
        return ZRB_CrcKernel::Run(m_plan.get(), m_table16.get(), m_byteInversion, m_inputReflected,
                                  static_cast<unsigned short>(reg), bytes, length);
    case 32:
        return ZRB_CrcKernel::Run(m_plan.get(), m_table32.get(), m_byteInversion, m_inputReflected,
                                  static_cast<unsigned int>(reg), bytes, length);
    case 64:
        return ZRB_CrcKernel::Run(m_plan.get(), m_table64.get(), m_byteInversion, m_inputReflected,
                                  reg, bytes, length);
    default:
        break;
    }
    // MIL-STD-1760: the words of a later piece are all nearer the end, so the checksum so far
    // is rotated by the new piece's word count before the piece's own checksum joins it.
    if (length == 0) {
        return reg;
    }
    unsigned short sum = static_cast<unsigned short>(reg);
    if ((reg & kMilPending) != 0) {
        const unsigned char pair[2] = {static_cast<unsigned char>(reg >> 24), bytes[0]};
        sum = static_cast<unsigned short>(ZRB::ShiftRotatedLeft16(sum, 1));
        Compute_MilStd1760(pair, 1, &sum, 1);
        // Compute_MilStd1760 rotates its single word by 1 and XORs it onto the sum.
        ++bytes;
        --length;
    }
    const unsigned __int64 words = length / 2;
    unsigned short piece = 0;
    Compute_MilStd1760(bytes, words, &piece, 0);
    sum = static_cast<unsigned short>(
        ZRB::ShiftRotatedLeft16(sum, static_cast<unsigned short>(words % 16)) ^ piece);
    unsigned __int64 next = sum;
    if ((length & 1U) != 0) {
        next |= kMilPending | static_cast<unsigned __int64>(bytes[length - 1]) << 24;
    }
    return next;
}

unsigned __int64 CZRB_Crc::Finish(unsigned __int64 reg) const {
    const unsigned int width = IncrementalWidth();
    if (width == 0) {
        return reg & 0xFFFF; // a byte still pending is an odd last byte: ignored
    }
    const unsigned __int64 mask = WidthMask(width);
    reg &= mask;
    if (m_outputReflected != 0) {
        reg = ZRB_CrcKernel::ReflectLow(reg, width);
    }
    return reg ^ (m_finalXor & mask);
}
