// Keeps exceptions on their own side of a host or library boundary. [any thread]
#pragma once

#include <utility>

namespace Steinberg {
namespace Vst {

/** Runs call and gives its result, or fallback when it threw anything. An exception that crossed a
    host's frames would end the host. */
template <typename Result, typename Call>
Result guarded(Result fallback, Call&& call) noexcept
{
    try {
        return static_cast<Result>(std::forward<Call>(call)());
    } catch (...) {
        return fallback;
    }
}

/** Runs call; an exception ends only the call. */
template <typename Call>
void guarded(Call&& call) noexcept
{
    try {
        std::forward<Call>(call)();
    } catch (...) { // NOLINT(bugprone-empty-catch): failures are silent by design
    }
}

} // namespace Vst
} // namespace Steinberg
