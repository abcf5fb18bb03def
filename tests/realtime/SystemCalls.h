// The system calls that an operation makes, as the kernel counts them.
#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace doubles {

/** Runs the operation in a copy of this process that is traced, and gives the numbers of its system
    calls in order; nothing when the copy could not be traced or did not come to its end. Nothing
    that the operation does is seen here. */
std::optional<std::vector<long>> systemCallsOf(const std::function<void()>& operation);

} // namespace doubles
