// LimitedMemory: no more than 8 MiB at once; beyond that memory has run out. A size field may claim
// two gigabytes, and a search would spend its time with allocating them.
#pragma once

#include <cstddef>

namespace fuzz {

constexpr size_t kMemoryLimit = 8u << 20;

/** While one lives, operator new throws std::bad_alloc beyond the limit. One at a time. */
class LimitedMemory {
public:
    LimitedMemory();
    LimitedMemory(const LimitedMemory&) = delete;
    LimitedMemory& operator=(const LimitedMemory&) = delete;
    ~LimitedMemory();
};

} // namespace fuzz
