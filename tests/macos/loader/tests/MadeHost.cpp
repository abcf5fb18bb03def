// Runs the bundle of Made.cpp and prints its values. With an argument it writes to constant data.
#include "tests/macos/loader/MacsImage.h"

#include <cstdio>
#include <cstring>

extern "C" {
struct Pointers {
    int* toNumber;
    const char* toText;
    const char* beyond;
};
const Pointers* getConstants() __asm__("mac_getConstants");
const Pointers* getVariables() __asm__("mac_getVariables");
int getOrder() __asm__("mac_getOrder");
int catchSeven(int a, int b, int c) __asm__("mac_catchSeven");

extern const char offeredText[];
const char offeredText[] = "text, beyond";
void throwSeven()
{
    throw 7;
}
void dyld_stub_binder() {}
}

int main(int count, char**)
{
    const macho::MacsImage image;
    const auto* constants = getConstants();
    const auto* variables = getVariables();
    const_cast<Pointers*>(variables)->toNumber[0] += 1;
    std::printf("initialisers %d, constants %d %s %s, variables %d %s, caught %d\n", getOrder(),
                *constants->toNumber, constants->toText, constants->beyond, *variables->toNumber,
                variables->toText, catchSeven(2, 3, 4));
    std::fflush(stdout);
    if (count > 1)
        const_cast<Pointers*>(constants)->toText = nullptr;
    return 0;
}
