// Timing: the clock and the average that the measuring programs share.
#pragma once

#include <algorithm>
#include <ctime>
#include <vector>

namespace bench {

/** Seconds of processor time that the calling thread has used. */
inline double threadSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/** @param values not empty */
inline double medianOf(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace bench
