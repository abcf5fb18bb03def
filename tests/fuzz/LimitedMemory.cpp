#include "tests/fuzz/LimitedMemory.h"

#include <atomic>
#include <cstdlib>
#include <limits>

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

namespace {

// The sanitizers' own operator new ends the process when memory has run out. This one throws, as
// the C++ library's does. The sanitizers still watch malloc, which it uses.
void* takeMemory(size_t size) noexcept
{
    return size > fuzz::limit ? nullptr : std::malloc(size ? size : 1);
}

void giveMemory(void* memory) noexcept
{
    std::free(memory);
}

} // namespace

#include "tests/doubles/OperatorNew.h"

extern "C" {

// The sanitizers' options, unless the environment has others. The limit is for calloc, and leaves
// room for the fuzzer's own tables.
__attribute__((used, visibility("default"))) const char* __asan_default_options()
{
    return "max_allocation_size_mb=64:allocator_may_return_null=1:detect_leaks=1:"
           "detect_stack_use_after_return=1:strict_string_checks=1:quarantine_size_mb=32";
}

__attribute__((used, visibility("default"))) const char* __ubsan_default_options()
{
    return "halt_on_error=1:print_stacktrace=1";
}

// When the host throws as a timer is registered or unregistered, the SDK's timer is not destroyed:
// its destructor would call that host again and end the process.
__attribute__((used, visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:createLinuxTimer\n";
}

} // extern "C"
