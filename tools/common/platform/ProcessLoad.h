// What the running process has taken of the system.
#pragma once

#include <cstddef>

namespace Steinberg {
namespace Vst {
namespace tools {

/** 0 where the system does not tell. */
size_t threadCount();
/** Bytes of memory that the allocator has given out; 0 where it does not tell. */
size_t heapInUse();

} // namespace tools
} // namespace Vst
} // namespace Steinberg
