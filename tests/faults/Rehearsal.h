// Rehearsal: one act of a scenario without a fault, for which calls a fault is worth trying at.
#pragma once

#include "tests/faults/Scenario.h"

#include <map>

namespace faults {

/** Calls about the parts 2 to 15 are those about part 1 with other IDs: parameter IDs end with the
    part's index, and a fault is tried at the first part, the last and the edit flag. With
    FAULTS_AT_EVERY_PART set it is tried everywhere. An allocation belongs to the library's call
    before it. */
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
