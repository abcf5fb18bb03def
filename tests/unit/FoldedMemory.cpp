#include "tests/unit/FoldedMemory.h"

#ifndef VSTK2X_SANITIZED

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::size_t kFold = std::size_t(2) << 20;
constexpr std::size_t kLeastFolded = std::size_t(1) << 30;

std::atomic<bool> folds{false};

// One block at a time is enough.
std::atomic<void*> foldedBlock{nullptr};
std::size_t foldedSize = 0;

/** Shows the file's megabytes at every place of an area. */
bool fillArea(char* area, std::size_t size, int file)
{
    for (std::size_t offset = 0; offset < size; offset += kFold)
        if (mmap(area + offset, kFold, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) ==
            MAP_FAILED)
            return false;
    return true;
}

void* mapFolded(std::size_t size)
{
    const std::size_t whole = (size + kFold - 1) / kFold * kFold;
    void* area = mmap(nullptr, whole, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (area == MAP_FAILED)
        return nullptr;
    std::FILE* file = std::tmpfile();
    const bool filled = file && ftruncate(fileno(file), kFold) == 0 &&
                        fillArea(static_cast<char*>(area), whole, fileno(file));
    if (file)
        std::fclose(file);
    if (!filled) {
        munmap(area, whole);
        return nullptr;
    }
    foldedSize = whole;
    foldedBlock = area;
    return area;
}

void* takeMemory(std::size_t size) noexcept
{
    return folds && size >= kLeastFolded && !foldedBlock ? mapFolded(size)
                                                         : std::malloc(size > 0 ? size : 1);
}

void giveMemory(void* memory) noexcept
{
    if (!memory || memory != foldedBlock) {
        std::free(memory);
        return;
    }
    foldedBlock = nullptr;
    munmap(memory, foldedSize);
}

} // namespace

#include "tests/doubles/OperatorNew.h"

namespace unit {

FoldedMemory::FoldedMemory()
{
    folds = true;
}

FoldedMemory::~FoldedMemory()
{
    folds = false;
}

} // namespace unit

#endif
