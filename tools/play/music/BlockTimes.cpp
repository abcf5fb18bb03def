#include "tools/play/music/BlockTimes.h"

#include <algorithm>
#include <cmath>

namespace Steinberg {
namespace Vst {
namespace play {

void BlockTimes::add(double seconds)
{
    const auto step = std::floor(std::log10(std::max(seconds, kShortest) / kShortest) *
                                 static_cast<double>(kStepsToATenfold));
    ++counts[std::min(static_cast<size_t>(step), kSteps - 1)];
    ++all;
    longestTime = std::max(longestTime, seconds);
    sumOfTimes += seconds;
}

double BlockTimes::endOf(size_t step)
{
    return kShortest * std::pow(10.0, static_cast<double>(step + 1) / kStepsToATenfold);
}

double BlockTimes::within(double part) const
{
    const auto wanted = static_cast<int64>(std::ceil(part * static_cast<double>(all)));
    int64 sofar = 0;
    for (size_t step = 0; step + 1 < kSteps; ++step) {
        sofar += counts[step];
        if (sofar >= wanted)
            return std::min(endOf(step), longestTime);
    }
    return longestTime;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
