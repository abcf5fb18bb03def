// Counts what the test program and every library in it allocate with operator new.
#pragma once

#include <cstddef>

namespace doubles {

/** Allocations of the calling thread so far. */
std::size_t allocationCount();

} // namespace doubles
