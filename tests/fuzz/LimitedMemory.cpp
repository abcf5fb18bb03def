#include "tests/fuzz/LimitedMemory.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace fuzz {

namespace {

std::atomic<size_t> limit{std::numeric_limits<size_t>::max()};

} // namespace

LimitedMemory::LimitedMemory()
{
    limit = kMemoryLimit;
}

LimitedMemory::~LimitedMemory()
{
    limit = std::numeric_limits<size_t>::max();
}

} // namespace fuzz

// The sanitizers' own operator new ends the process where memory has run out; ours throws, as the
// one does that users have. It takes from malloc, which the sanitizers go on watching.
void* operator new(size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return size > fuzz::limit ? nullptr : std::malloc(size ? size : 1);
}

void* operator new[](size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}

void* operator new(size_t size)
{
    void* memory = operator new(size, std::nothrow);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* operator new[](size_t size)
{
    return operator new(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, size_t /*size*/) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, size_t /*size*/) noexcept
{
    std::free(memory);
}

extern "C" {

// What the sanitizers do unless the environment says otherwise. calloc has a limit here: the
// fuzzer's own tables fit in.
__attribute__((used, visibility("default"))) const char* __asan_default_options()
{
    return "max_allocation_size_mb=64:allocator_may_return_null=1:detect_leaks=1:"
           "detect_stack_use_after_return=1:strict_string_checks=1:quarantine_size_mb=32";
}

__attribute__((used, visibility("default"))) const char* __ubsan_default_options()
{
    return "halt_on_error=1:print_stacktrace=1";
}

// A host that throws when a timer is registered or taken out: the SDK's timer is lost then, since
// at its end it would ask that host again and end the process.
__attribute__((used, visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:createLinuxTimer\n";
}

} // extern "C"
