#include "demo_sections.h"

#include "CZRB_ArithmeticContainers.h"
#include "LZRB_Core.h"

#include <cstdio>

void DemoContainers() {
    std::puts("== Containers: vector, list, typed byte access ==");
    int values[] = {42, 7, 19, 3};
    CZRB_Int32Vector vector(values, 4);
    vector.AppendItem(11);
    vector.InsertItems(1, 99, 2, 1);
    vector.Sort(1);
    std::printf("sorted vector of %u:", vector.GetLength());
    for (unsigned int i = 0; i < vector.GetLength(); ++i) {
        std::printf(" %d", vector[i]);
    }
    std::printf("  (min %d, max %d)\n", vector.Min(), vector.Max());

    CZRB_DoubleList list;
    list.Push(1.5);
    list.Push(2.5);
    list.Push(4.0);
    list.ToStart();
    list.InsertItem(0.5);
    double top = 0.0;
    list.Pop(&top);
    std::printf("list after pop of %.1f:", top);
    list.ToStart();
    for (unsigned int i = 0; i < list.GetLength(); ++i) {
        std::printf(" %.1f", list.Next(1));
    }
    std::printf("  (cursor on the last item: %u)\n", list.IsEnd());

    CZRB_Uint8Vector bytes(8U, 0);
    bytes.SetUint32(0x12345678U, 0, ZRB::BYTE_ORDER_BIG_ENDIAN);
    bytes.SetUint16(0xBEEF, 4, ZRB::BYTE_ORDER_LITTLE_ENDIAN);
    std::printf("byte vector:");
    for (unsigned int i = 0; i < bytes.GetLength(); ++i) {
        std::printf(" %02X", bytes[i]);
    }
    std::printf("\nread back: 0x%08X big-endian, 0x%08X little-endian\n",
                bytes.GetUint32(0, ZRB::BYTE_ORDER_BIG_ENDIAN),
                bytes.GetUint32(0, ZRB::BYTE_ORDER_LITTLE_ENDIAN));
    try {
        bytes.GetUint64(4, ZRB::BYTE_ORDER_BIG_ENDIAN);
    } catch (const CZRB_Exception& e) {
        std::printf("reading 8 bytes at offset 4 of 8 throws code %u\n", e.code);
    }
}
