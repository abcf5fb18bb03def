#include "tests/faults/SystemFaults.h"

#include "tests/doubles/MacsCode.h"
#include "tests/doubles/Sanitized.h"
#include "tests/faults/OwnCode.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <new>
#include <stdio_ext.h>
#include <sys/stat.h>

namespace {

struct Counter {
    bool counts = false;
    size_t calls = 0;
    size_t failing = 0; ///< 0: none
    bool all = false;   ///< and those after it

    void start(size_t n, bool forAll) { *this = {true, 0, n, forAll}; }
    bool fails()
    {
        ++calls;
        return failing > 0 && (all ? calls >= failing : calls == failing);
    }
};

thread_local Counter memory;
thread_local Counter files;
thread_local bool anyFailed = false;
thread_local const char* failedFile = "";
thread_local FILE* openedLast = nullptr; ///< by the plug-in, which has taken no memory since
std::atomic<long> objects{0};

std::uintptr_t address(const void* returnAddress)
{
    return reinterpret_cast<std::uintptr_t>(returnAddress);
}

bool memoryFails(size_t size, const void* returnAddress)
{
    const bool isTooMuch = size > faults::SystemFaults::kMostMemory;
    if ((!memory.counts && !isTooMuch) || !faults::isCalledByOwnCode(address(returnAddress)))
        return false;
    FILE* opened = openedLast;
    openedLast = nullptr;
    if (!memory.fails() && !isTooMuch)
        return false;
    anyFailed = true;
    // The SDK's FileStream does not close the file that it has no memory to keep.
    if (opened)
        fclose(opened);
    return true;
}

enum class Access { kLooks, kChanges };

bool fileFails(const char* function, Access access, const void* returnAddress)
{
    if (!files.counts || !faults::isOwnCode(address(returnAddress)) || !files.fails())
        return false;
    if (files.all && access == Access::kLooks)
        return false;
    if (*failedFile == 0)
        failedFile = function;
    anyFailed = true;
    errno = ENOSPC;
    return true;
}

void* allocate(size_t size, const void* returnAddress)
{
    if (memoryFails(size, returnAddress))
        return nullptr;
    void* result = std::malloc(size > 0 ? size : 1);
    if (result)
        ++objects;
    return result;
}

void* allocateOrThrow(size_t size, const void* returnAddress)
{
    if (void* result = allocate(size, returnAddress))
        return result;
    throw std::bad_alloc();
}

void end(void* object)
{
    if (object)
        --objects;
    std::free(object);
}

/** The system's own function behind one of ours. */
template <typename Function>
Function real(Function, const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

namespace faults {

void SystemFaults::failMemory(size_t n, bool all)
{
    openedLast = nullptr;
    anyFailed = false;
    memory.start(n, all);
}

void SystemFaults::failFiles(size_t n, bool all)
{
    failedFile = "";
    anyFailed = false;
    files.start(n, all);
}

void SystemFaults::clear()
{
    memory.counts = false;
    files.counts = false;
    anyFailed = false;
}

bool SystemFaults::hasFailed()
{
    return anyFailed;
}

size_t SystemFaults::memoryCalls()
{
    return memory.calls;
}

size_t SystemFaults::fileCalls()
{
    return files.calls;
}

const char* SystemFaults::failedFileCall()
{
    return failedFile;
}

long SystemFaults::liveObjects()
{
    // A Mac's code has a C++ library of its own, and the library's files theirs: what one of them
    // takes another may give back.
    return doubles::kIsMacsCode ? 0 : objects.load();
}

} // namespace faults

// The program's own operators are the first that a loaded library binds to. A sanitizer sees what
// they do with malloc.
void* operator new(size_t size)
{
    return allocateOrThrow(size, __builtin_return_address(0));
}

void* operator new[](size_t size)
{
    return allocateOrThrow(size, __builtin_return_address(0));
}

void* operator new(size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size, __builtin_return_address(0));
}

void* operator new[](size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size, __builtin_return_address(0));
}

void operator delete(void* object) noexcept
{
    end(object);
}

void operator delete[](void* object) noexcept
{
    end(object);
}

void operator delete(void* object, size_t) noexcept
{
    end(object);
}

void operator delete[](void* object, size_t) noexcept
{
    end(object);
}

void operator delete(void* object, const std::nothrow_t&) noexcept
{
    end(object);
}

void operator delete[](void* object, const std::nothrow_t&) noexcept
{
    end(object);
}

#pragma GCC visibility push(default) // for the plug-in, which looks them up
extern "C" {

#ifndef VSTK2X_SANITIZED // a sanitizer's own must be the one that is called
void* __libc_calloc(size_t count, size_t size);

void* calloc(size_t count, size_t size) noexcept
{
    // What is as large costs nothing before it is written to.
    const size_t asked = std::min(count * size, faults::SystemFaults::kMostMemory);
    return memoryFails(asked, __builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}
#endif

FILE* fopen(const char* name, const char* mode)
{
    static const auto next = real(&fopen, "fopen");
    FILE* file = fileFails("fopen", Access::kChanges, __builtin_return_address(0))
                     ? nullptr
                     : next(name, mode);
    if (memory.counts && faults::isOwnCode(address(__builtin_return_address(0))))
        openedLast = file;
    return file;
}

size_t fwrite(const void* data, size_t size, size_t count, FILE* file)
{
    static const auto next = real(&fwrite, "fwrite");
    return fileFails("fwrite", Access::kChanges, __builtin_return_address(0))
               ? 0
               : next(data, size, count, file);
}

int fseek(FILE* file, long offset, int origin)
{
    static const auto next = real(&fseek, "fseek");
    if (!fileFails("fseek", Access::kChanges, __builtin_return_address(0)))
        return next(file, offset, origin);
    __fpurge(file);
    return -1;
}

int fclose(FILE* file)
{
    static const auto next = real(&fclose, "fclose");
    const bool fails = fileFails("fclose", Access::kChanges, __builtin_return_address(0));
    if (fails)
        __fpurge(file); // what waited to be written is lost
    const int result = next(file);
    return fails ? EOF : result;
}

int mkdir(const char* path, mode_t mode) noexcept
{
    static const auto next = real(&mkdir, "mkdir");
    return fileFails("mkdir", Access::kChanges, __builtin_return_address(0)) ? -1
                                                                             : next(path, mode);
}

int stat(const char* path, struct stat* status) noexcept
{
    static const auto next = real(&stat, "stat");
    return fileFails("stat", Access::kLooks, __builtin_return_address(0)) ? -1 : next(path, status);
}

int lstat(const char* path, struct stat* status) noexcept
{
    static const auto next = real(&lstat, "lstat");
    return fileFails("lstat", Access::kLooks, __builtin_return_address(0)) ? -1
                                                                           : next(path, status);
}

} // extern "C"
#pragma GCC visibility pop
