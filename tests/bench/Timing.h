// Timing: the clock and the average that the measuring programs share.
#pragma once

#include <vector>

namespace bench {

/** Seconds of processor time that the calling thread has used. */
double threadSeconds();

/** @param values not empty */
double medianOf(std::vector<double> values);

} // namespace bench
