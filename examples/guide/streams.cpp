// Streams: one record written to memory and to a file through the same code, then read back.
// Every value is stored little-endian with no tags, so both streams hold the same bytes.
#include <CZRB_Date.h>
#include <CZRB_File.h>
#include <CZRB_FileBuffer.h>
#include <CZRB_MemoryBuffer.h>

#include <cstdio>

void WriteRecord(CZRB_Buffer& stream) {
    CZRB_String name("probe");
    CZRB_Date date(2024, 2, 29, CZRB_Date::CALENDAR_GREGORIAN);
    stream << name << date << 1500U << 0.25;
}

void ReadRecord(CZRB_Buffer& stream, const char* from) {
    CZRB_String name;
    CZRB_Date date;
    unsigned int count = 0;
    double ratio = 0.0;
    stream >> name >> date >> count >> ratio;
    std::printf("%s: %s %s %u %.2f\n", from, name.GetStringC(),
                date.ToString("%Y-%M-%D", CZRB_Date::CALENDAR_GREGORIAN).GetStringC(), count,
                ratio);
}

int main() {
    CZRB_MemoryBuffer memory(16); // blocks of 16 bytes
    WriteRecord(memory);
    std::printf("memory: %llu bytes in %u blocks\n", memory.GetSize(), memory.GetBlockCount());
    memory.ToStart();
    ReadRecord(memory, "memory");
    try {
        unsigned char more = 0;
        memory >> more;
    } catch (const CZRB_Exception& e) {
        std::printf("reading past the end throws code %u\n", e.code);
    }

    const CZRB_String path("guide_stream.bin");
    CZRB_File file;
    CZRB_FileBuffer stream;
    file.Open(path, CZRB_File::OPEN_WRITE | CZRB_File::OPEN_CREATE);
    stream.AttachFile(&file, CZRB_Buffer::ACCESS_WRITE);
    WriteRecord(stream);
    stream.Close(); // writes what is cached and detaches
    file.Close();

    file.Open(path, CZRB_File::OPEN_READ);
    std::printf("file: %llu bytes\n", file.GetLength());
    stream.AttachFile(&file, CZRB_Buffer::ACCESS_READ);
    ReadRecord(stream, "file");
    stream.Close();
    file.Close();
    CZRB_File::DeleteFile(path);
    return 0;
}
