// Containers: a vector sorted and searched, a list read through its cursor, typed access to a
// byte vector, and the exception a broken precondition throws.
#include <LZRB_Core/LZRB_Core.h>

#include <cstdio>

int main() {
    int values[] = {42, 7, 19, 3};
    CZRB_Int32Vector numbers(values, 4);
    numbers.AppendItem(11);
    numbers.Sort(1); // non-zero: smallest first
    unsigned int at = 0;
    numbers.FindToEnd(19, &at, 0);
    std::printf("sorted:");
    for (unsigned int i = 0; i < numbers.GetLength(); ++i) {
        std::printf(" %d", numbers[i]);
    }
    std::printf(" (19 at %u, min %d, max %d)\n", at, numbers.Min(), numbers.Max());

    // Next returns the cursor's item, then moves the cursor on (it stops on the last item).
    CZRB_DoubleList list;
    list.Push(1.5);
    list.Push(2.5);
    list.Push(4.0);
    double top = 0.0;
    list.Pop(&top);
    list.ToStart();
    std::printf("popped %.1f, left:", top);
    for (unsigned int i = 0; i < list.GetLength(); ++i) {
        std::printf(" %.1f", list.Next(1));
    }
    std::printf("\n");

    CZRB_Uint8Vector bytes(4U, 0);
    bytes.SetUint32(0x12345678U, 0, ZRB::BYTE_ORDER_BIG_ENDIAN);
    std::printf("bytes %02X %02X %02X %02X, read little-endian 0x%08X\n", bytes[0], bytes[1],
                bytes[2], bytes[3], bytes.GetUint32(0, ZRB::BYTE_ORDER_LITTLE_ENDIAN));
    try {
        bytes.GetUint16(3, ZRB::BYTE_ORDER_BIG_ENDIAN); // bytes 3 and 4 of a 4-byte vector
    } catch (const CZRB_Exception& e) {
        std::printf("GetUint16 at 3 throws code %u\n", e.code);
    }
    return 0;
}
