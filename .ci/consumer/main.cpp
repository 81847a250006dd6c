// A program outside the source tree that uses the installed library.
#include <LZRB_Core.h>

#include <cstdio>

int main() {
    try {
        throw CZRB_Exception(32, nullptr, 7);
    } catch (const CZRB_Exception& e) {
        if (e.code != 32 || e.detail != 7) {
            return 1;
        }
    }
    if (ZRB::IntCeil(11, 5) != 3) {
        return 1;
    }
    std::puts("consumer: installed LZRB_Core works");
    return 0;
}
