#include "tests/realtime/AllocationCount.h"

#include "tests/doubles/Sanitized.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocations = 0;

} // namespace

std::size_t doubles::allocationCount()
{
    return allocations;
}

#ifdef VSTK2X_SANITIZED

// Of the sanitizers' run-time; GCC comes without the header that declares it.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*,
                                                                  std::size_t),
                                                         void (*)(const volatile void*));

namespace {

// A sanitizer has operators of its own, which look for errors, and tells whoever asks.
const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) { ++allocations; }, [](const volatile void*) {});

} // namespace

#else

namespace {

void* allocate(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// A loaded library binds to these too, as the program's own come first.
void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
#endif
