#include "tests/endurance/Footprint.h"

#include "tests/doubles/Sanitized.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

// A sanitizer's allocator keeps freed memory and does not say how much. It looks for leaks itself.
#ifdef VSTK2X_SANITIZED
#define JUDGES_MEMORY 0
#else
#define JUDGES_MEMORY 1
#endif

// An emulator's own memory grows with the code that it has translated.
#if defined(VSTK2X_MACHO) && defined(__aarch64__)
#define JUDGES_RESIDENT 0
#else
#define JUDGES_RESIDENT JUDGES_MEMORY
#endif

namespace endurance {

namespace {

std::size_t countIn(const char* folder)
{
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        static_cast<void>(entry);
        ++count;
    }
    return count;
}

bool stays(const char* what, std::size_t before, std::size_t after, std::size_t slack)
{
    if (after <= before + slack)
        return true;
    std::fprintf(stderr, "%s grew from %zu to %zu\n", what, before, after);
    return false;
}

} // namespace

Footprint Footprint::take()
{
    Footprint now;
#if JUDGES_MEMORY
    malloc_trim(0);
    const struct mallinfo2 heap = mallinfo2();
    now.heapBytes = heap.uordblks + heap.hblkhd;
#endif
#if JUDGES_RESIDENT
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    now.residentBytes = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
#endif
    now.handles = countIn("/proc/self/fd");
    now.threads = countIn("/proc/self/task");
    return now;
}

std::string Footprint::text() const
{
    std::string memory = JUDGES_MEMORY ? "heap " + std::to_string(heapBytes) + " bytes"
                                       : "memory not judged under a sanitizer";
    if (JUDGES_RESIDENT)
        memory += ", resident " + std::to_string(residentBytes) + " bytes";
    return memory + ", handles " + std::to_string(handles) + ", threads " + std::to_string(threads);
}

bool isFlat(const Footprint& before, const Footprint& after, std::size_t heapSlack,
            std::size_t residentSlack)
{
    const bool heap = stays("heap bytes", before.heapBytes, after.heapBytes, heapSlack);
    const bool resident =
        stays("resident bytes", before.residentBytes, after.residentBytes, residentSlack);
    const bool handles = stays("handles", before.handles, after.handles, 0);
    const bool threads = stays("threads", before.threads, after.threads, 0);
    return heap && resident && handles && threads;
}

} // namespace endurance
