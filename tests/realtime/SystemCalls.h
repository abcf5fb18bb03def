// systemCallsOf: the system calls that an operation makes, as ptrace reports them.
#pragma once

#include <functional>
#include <optional>
#include <vector>

namespace doubles {

/** Runs the operation in a forked process, so that nothing it does changes this one.
    @return the numbers of its system calls, in order; nullopt if the process could not be traced or
    did not end normally */
std::optional<std::vector<long>> systemCallsOf(const std::function<void()>& operation);

} // namespace doubles
