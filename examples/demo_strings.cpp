#include "demo_sections.h"

#include "CZRB_MemoryBuffer.h"
#include "CZRB_String.h"

#include <cstdio>

void DemoStrings() {
    std::puts("== Strings: formatting, searching, tags, a record in memory ==");
    CZRB_String line;
    line.Format("%s;%d;%s;;%s", "sensor", 42, CZRB_String::FromNumber(3.14159, 'f', 2).GetStringC(),
                CZRB_String::FromNumber(1234567ULL, 10, 3, '.').GetStringC());
    std::printf("formatted: '%s' (%u characters)\n", line.GetStringC(), line.GetLength());

    unsigned int position = 0;
    if (line.FindFromBegin(CZRB_String("SENSOR"), &position, 0, 0) != 0) {
        std::printf("'SENSOR' found ignoring case at %u\n", position);
    }
    if (line.FindFromEnd(';', &position, line.GetLength()) != 0) {
        std::printf("last ';' at %u\n", position);
    }
    std::printf("0x1f, 1FH and 17o read as %llu, %llu and %llu\n",
                CZRB_String("0x1f").ToUnsignedAutoRadix(1),
                CZRB_String("1FH").ToUnsignedAutoRadix(2),
                CZRB_String("17o").ToUnsignedAutoRadix(2));

    CZRB_StringVector tags;
    line.ExtractTags(';', tags);
    std::printf("%u tags:", tags.GetLength());
    for (unsigned int i = 0; i < tags.GetLength(); ++i) {
        std::printf(" [%s]", tags[i].GetStringC());
    }
    std::puts("");

    CZRB_MemoryBuffer buffer(8);
    for (unsigned int i = 0; i < tags.GetLength(); ++i) {
        buffer << tags[i];
    }
    std::printf("%u tags written: %llu bytes in %u blocks of 8\n", tags.GetLength(),
                buffer.GetSize(), buffer.GetBlockCount());
    buffer.ToStart();
    CZRB_StringList readBack;
    while (buffer.IsEnd() == 0) {
        CZRB_String tag;
        buffer >> tag;
        readBack.AppendItem(tag);
    }
    readBack.Sort(1, 0);
    std::printf("read back and sorted ignoring case:");
    readBack.ToStart();
    for (unsigned int i = 0; i < readBack.GetLength(); ++i) {
        std::printf(" [%s]", readBack.Next(1).GetStringC());
    }
    std::puts("");
}
