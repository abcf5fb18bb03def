#include "tests/macos/fakes/FakeMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

void* allocate(std::size_t size)
{
    if (std::exchange(doubles::FakeMemory::failsNext, false))
        return nullptr;
    return std::malloc(size > 0 ? size : 1);
}

} // namespace

// All that belong together: a sanitizer would not like an object of one's operator in another's.
void* operator new(std::size_t size)
{
    if (void* memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
