// Version: the version the headers were generated with. When the build system passes the
// version of the package it found (LZRB_PACKAGE_VERSION), the two must agree.
#include <LZRB_Core/LZRB_Version.h>

#include <cstdio>
#include <cstring>

int main() {
    char numbers[32];
    std::snprintf(numbers, sizeof(numbers), "%d.%d.%d", LZRB_CORE_VERSION_MAJOR,
                  LZRB_CORE_VERSION_MINOR, LZRB_CORE_VERSION_PATCH);
    std::printf("LZRB_Core %s\n", LZRB_CORE_VERSION);
    int mismatch = std::strcmp(numbers, LZRB_CORE_VERSION) != 0;
#ifdef LZRB_PACKAGE_VERSION
    std::printf("package version %s\n", LZRB_PACKAGE_VERSION);
    mismatch |= std::strcmp(LZRB_PACKAGE_VERSION, LZRB_CORE_VERSION) != 0;
#endif
    return mismatch;
}
