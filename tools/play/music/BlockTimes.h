// BlockTimes: how long process took, as a distribution.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <array>

namespace Steinberg {
namespace Vst {
namespace play {

/** Counts times in steps that grow with them, fifty to each factor of ten, so that any number of
    blocks needs the same memory. add allocates nothing. */
class BlockTimes {
public:
    static constexpr int kStepsToATenfold = 50;
    static constexpr int kTenfolds = 9;
    static constexpr double kShortest = 1e-8; ///< seconds; what is shorter counts in the first step
    static constexpr size_t kSteps = size_t{kStepsToATenfold} * kTenfolds;

    void add(double seconds);

    /** Number of blocks in each step. Step i ends where step i + 1 begins, at endOf(i); the last
       one has all that is longer too. */
    const std::array<int64, kSteps>& steps() const { return counts; }
    static double endOf(size_t step);

    int64 blocks() const { return all; }
    double longest() const { return longestTime; }
    double sum() const { return sumOfTimes; }

    /** The time that this part of the blocks (0 to 1) stayed within, at most 5 % too long; 0
        without blocks. */
    double within(double part) const;

private:
    std::array<int64, kSteps> counts{};
    int64 all = 0;
    double longestTime = 0;
    double sumOfTimes = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
