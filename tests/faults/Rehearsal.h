// Rehearsal: one act of a scenario without a fault, for which calls a fault is worth trying at.
#pragma once

#include "tests/faults/Scenario.h"

#include <map>

namespace faults {

/** The plug-in does the same with every part's parameters, so a fault is tried at those of part 1,
    at the last one of part 16 and at the edit flag; with FAULTS_AT_EVERY_PART set, at all. An
    allocation belongs to the library's call before it. */
class Rehearsal {
public:
    explicit Rehearsal(const MakeScenario& make);

    /** Whether the fault would be another's again, or the call has no answer for such nonsense. */
    bool isIdle(Kind kind, size_t call) const;

private:
    bool isRepetition(Kind kind, size_t call) const;

    bool isRepeated = false;
    std::vector<bool> libraryCalls;
    std::vector<bool> allocations;
    std::map<Kind, std::vector<bool>> answers; ///< whether each call has one for such nonsense
};

} // namespace faults
