// Strings: formatting, numbers to text and back, searching, splitting and sorting.
#include <CZRB_String.h>

#include <cstdio>

int main() {
    CZRB_String line;
    line.Format("%s;%d;%s;", "Sensor", 42,
                CZRB_String::FromNumber(1234567ULL, 10, 3, '.').GetStringC());
    std::printf("'%s' has %u characters\n", line.GetStringC(), line.GetLength());

    unsigned int at = 0;
    if (line.FindFromBegin(CZRB_String("SENSOR"), &at, 0) != 0) { // 0: ignore case
        std::printf("'SENSOR' found at %u ignoring case\n", at);
    }

    CZRB_StringVector fields; // a trailing separator gives no empty last field
    line.ExtractTags(';', fields);
    std::printf("%u fields, the last as a number: %llu\n", fields.GetLength(),
                fields[2].RemoveChar('.').ToUnsigned(10));

    CZRB_String padded("abc");
    padded.SetFormatted(7, CZRB_String::ALIGN_CENTER, '*');
    std::printf("centred: %s, hex 1FH: %llu\n", padded.GetStringC(),
                CZRB_String("1FH").ToUnsignedAutoRadix(2));

    CZRB_String names[] = {"delta", "Alpha", "charlie", "Bravo"};
    CZRB_StringVector sorted(names, 4);
    sorted.Sort(1, 0); // ascending, ignoring case
    std::printf("sorted: %s %s %s %s\n", sorted[0].GetStringC(), sorted[1].GetStringC(),
                sorted[2].GetStringC(), sorted[3].GetStringC());
    return 0;
}
