#include "tests/realtime/AllocationCount.h"

#include "tests/doubles/Sanitized.h"

#include <cstdlib>

namespace {

thread_local std::size_t allocations = 0;

} // namespace

std::size_t doubles::allocationCount()
{
    return allocations;
}

#ifdef VSTK2X_SANITIZED

// A function of the sanitizers' run-time. GCC has no header that declares it.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*,
                                                                  std::size_t),
                                                         void (*)(const volatile void*));

namespace {

// A sanitizer has an operator new of its own, which calls these hooks.
const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) { ++allocations; }, [](const volatile void*) {});

} // namespace

#else

namespace {

void* takeMemory(std::size_t size) noexcept
{
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}

void giveMemory(void* memory) noexcept
{
    std::free(memory);
}

} // namespace

#include "tests/doubles/OperatorNew.h"

#endif
