// Stream records from arbitrary bytes in a file: the input's bytes become a file read through
// a file stream with a cache of 1..64 bytes (so records cross cache refills), and a script
// reads strings, dates, times, addresses, colours and primitives, rewinds and continues on
// copies. Every read is checked against the file's bytes by RecordReader.
#include "CZRB_File.h"
#include "CZRB_FileBuffer.h"
#include "FuzzSupport.h"
#include "StreamRecords.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const unsigned int blockSize = input.TakeInRange(1, 64);
    const std::string script = input.TakeShortBytes(32);
    const std::string bytes = input.TakeRest();
    if (script.empty()) {
        return 0;
    }

    CZRB_File file;
    FUZZ_CHECK(file.Open(ScratchFile::Write(bytes), CZRB_File::OPEN_READ) == 0);
    auto stream = std::make_unique<CZRB_FileBuffer>(blockSize);
    FUZZ_CHECK(stream->AttachFile(&file, CZRB_Buffer::ACCESS_READ) == 0);
    FUZZ_CHECK(stream->GetSize() == bytes.size() && stream->GetAbsPosition() == 0);

    PlayScript(stream, bytes, script);
    return 0;
}
