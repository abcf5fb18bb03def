// Functions of Darwin's C library that Linux has under another name or with other arguments.
#include "tests/macos/loader/DarwinCall.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

namespace macho {

void endProgram(const char* what, const void* where)
{
    std::fprintf(stderr, "macho: %s (%p)\n", what, where);
    std::abort();
}

} // namespace macho

/** The libraries in the plug-in compare errno with ERANGE and EBUSY, which have the same numbers in
    Darwin's sys/errno.h. */
DARWIN_CALL(int*, __error)()
{
    return &errno;
}

DARWIN_CALL(void, __bzero)(void* memory, size_t size)
{
    std::memset(memory, 0, size);
}

DARWIN_CALL(void, bzero)(void* memory, size_t size)
{
    std::memset(memory, 0, size);
}

/** Functions store it below their return address and compare it when they return. */
extern "C" {
__attribute__((visibility("hidden"))) extern uint64_t darwin___stack_chk_guard;
uint64_t darwin___stack_chk_guard = 0x00C0FFEE5AFEA55A;
}

DARWIN_CALL(void, __stack_chk_fail)()
{
    macho::endProgram("a function wrote beyond its stack frame", __builtin_return_address(0));
}

DARWIN_CALL(void, dyld_stub_binder)()
{
    macho::endProgram("a call was not bound when the image was loaded", nullptr);
}

/** Darwin's <dlfcn.h>: RTLD_LAZY 1, RTLD_NOW 2, RTLD_LOCAL 4, which is RTLD_NOLOAD here,
    RTLD_GLOBAL 8, RTLD_NOLOAD 16, RTLD_NODELETE 128. */
DARWIN_CALL(void*, dlopen)(const char* path, int mode)
{
    constexpr int kKnown = 1 | 2 | 4 | 8 | 16 | 128;
    if ((mode & ~kKnown) != 0)
        macho::endProgram("dlopen was called with a mode that Darwin does not have", nullptr);
    int flags = mode & 1 ? RTLD_LAZY : 0;
    flags |= mode & 2 ? RTLD_NOW : 0;
    flags |= mode & 8 ? RTLD_GLOBAL : 0;
    flags |= mode & 16 ? RTLD_NOLOAD : 0;
    flags |= mode & 128 ? RTLD_NODELETE : 0;
    return dlopen(path, flags);
}

#if defined(__aarch64__)
// On arm64 Apple passes all variable arguments on the stack, eight bytes each (Apple's "Writing
// ARM64 code for Apple platforms"); Linux passes the first ones in registers. So these functions
// make a Linux va_list that says that all registers are used up. Its five fields are the stack, the
// ends of the two areas of saved registers, and how much of each is unread. Both functions have
// three arguments before the variable ones.
#define VARIADIC_CALL(name, withList)                                                              \
    asm(".text\n"                                                                                  \
        ".hidden darwin_" name "\n"                                                                \
        ".globl darwin_" name "\n"                                                                 \
        ".type darwin_" name ", %function\n"                                                       \
        "darwin_" name ":\n"                                                                       \
        "    mov x3, sp\n"                                                                         \
        "    stp x29, x30, [sp, #-48]!\n"                                                          \
        "    mov x29, sp\n"                                                                        \
        "    stp x3, x3, [sp, #16]\n"                                                              \
        "    stp x3, xzr, [sp, #32]\n"                                                             \
        "    add x3, sp, #16\n"                                                                    \
        "    bl " withList "\n"                                                                    \
        "    ldp x29, x30, [sp], #48\n"                                                            \
        "    ret\n")

VARIADIC_CALL("snprintf", "vsnprintf");
VARIADIC_CALL("CFStringCreateWithFormat", "CFStringCreateWithFormatAndArguments");
#endif
