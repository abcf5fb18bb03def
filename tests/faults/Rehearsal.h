// Rehearsal: runs an act without a fault, to find the calls at which faults are worth trying.
#pragma once

#include "tests/faults/Scenario.h"

#include <map>

namespace faults {

/** The plug-in treats the parameters of all 16 parts alike. So faults are tried at the parameters
    of part 1, at the last one of part 16 and at the edit flag; with FAULTS_AT_EVERY_PART set, at
    all of them. An allocation counts as belonging to the library's call before it. */
class Rehearsal {
public:
    explicit Rehearsal(const MakeScenario& make);

    /** Whether a fault here repeats another one, or the call cannot answer such nonsense. */
    bool isIdle(Kind kind, size_t call) const;

private:
    bool isRepetition(Kind kind, size_t call) const;

    bool isRepeated = false;
    std::vector<bool> libraryCalls;
    std::vector<bool> allocations;
    std::map<Kind, std::vector<bool>> answers; ///< whether each call can answer such nonsense
};

} // namespace faults
