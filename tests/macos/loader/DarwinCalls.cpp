// Calls of Darwin's C library that Linux's has under another name or takes in another way.
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

/** The numbers that the plug-in's libraries ask for, ERANGE and EBUSY, are the same on both: those
    of Darwin's sys/errno.h. */
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

/** What functions put below their return address and look for again when they return. */
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
    macho::endProgram("a call was bound at its first use, though all are bound when it is loaded",
                      nullptr);
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
// Apple's variable arguments on arm64 are all on the stack, eight bytes each, by Apple's "Writing
// ARM64 code for Apple platforms"; Linux's begin in registers. A Linux va_list of which all
// registers count as read goes on with the stack: its five fields are the stack, the ends of both
// kinds of saved registers, and how much of each is unread. Both calls have three arguments before
// the variable ones.
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
