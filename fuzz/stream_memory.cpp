// Stream records from arbitrary bytes in a memory stream: the bytes are appended in chunks of
// a size the input chooses (block size 1..64, so records cross blocks), then a script reads
// strings, dates, times, addresses, colours and primitives, rewinds and continues on copies.
// Every read is checked against the bytes by RecordReader; appending checks the block chain.
#include "CZRB_MemoryBuffer.h"
#include "FuzzSupport.h"
#include "StreamRecords.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const unsigned int blockSize = input.TakeInRange(1, 64);
    const unsigned int chunk = input.TakeInRange(1, 64);
    const std::string script = input.TakeShortBytes(32);
    const std::string bytes = input.TakeRest();
    if (script.empty()) {
        return 0;
    }

    auto stream = std::make_unique<CZRB_MemoryBuffer>(blockSize);
    for (std::size_t at = 0; at < bytes.size(); at += chunk) {
        std::string part = bytes.substr(at, chunk);
        stream->AppendData(&part[0], static_cast<unsigned int>(part.size()));
    }
    // A block that becomes exactly full gets its empty successor at once.
    FUZZ_CHECK(stream->GetSize() == bytes.size() && stream->GetAbsPosition() == bytes.size());
    FUZZ_CHECK(stream->GetBlockCount() == (bytes.empty() ? 0 : bytes.size() / blockSize + 1));
    stream->ToStart();

    PlayScript(stream, bytes, script);
    return 0;
}
