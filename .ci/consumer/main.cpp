// A program outside the source tree that uses the installed library. Exceptions, type
// information and dynamic_cast of the library's classes must work across the library
// boundary. An optional argument is the value __cplusplus must have (the standard asked for).
#include <LZRB_Core.h>
#include <LZRB_Core/CZRB_FileBuffer.h>

#include <cstdio>
#include <cstdlib>
#include <typeinfo>

namespace {

int Fail(const char* what) {
    std::printf("consumer: %s\n", what);
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && __cplusplus != std::atol(argv[1])) {
        return Fail("compiled at another language standard than asked for");
    }
    CZRB_MemoryBuffer memory(16);
    CZRB_Buffer& stream = memory;
    try {
        unsigned int value = 0;
        stream >> value; // thrown inside the library: nothing to read
        return Fail("reading an empty stream did not throw");
    } catch (const CZRB_Exception& e) {
        if (e.code != 3 || e.object != &memory || e.detail != 0) {
            return Fail("wrong exception from the library");
        }
    }
    if (dynamic_cast<CZRB_MemoryBuffer*>(&stream) == nullptr ||
        dynamic_cast<CZRB_FileBuffer*>(&stream) != nullptr ||
        typeid(stream) != typeid(CZRB_MemoryBuffer)) {
        return Fail("type information of a library class differs across the boundary");
    }
    if (ZRB::IntCeil(11, 5) != 3) {
        return Fail("ZRB::IntCeil");
    }
    std::printf("consumer: installed LZRB_Core %s works at C++ %ld\n", LZRB_CORE_VERSION,
                static_cast<long>(__cplusplus));
    return 0;
}
