// ValidatorReport: what one run of the SDK's validator printed.
#pragma once

#include <string>
#include <vector>

namespace hosts {

/** One test of the validator's. */
struct ValidatorOutcome {
    std::string name; ///< "SUITE / TEST", with the test's description where it has one
    bool passed = false;
    std::vector<std::string> errors; ///< the texts of its "ERROR:" lines, in order
};

struct ValidatorReport {
    std::vector<ValidatorOutcome> outcomes; ///< in the order of the run
    bool finished = false; ///< whether it came to its summary, and the summary counts what we count

    /** @param text all that the validator printed, without -q */
    static ValidatorReport read(const std::string& text);

    std::vector<ValidatorOutcome> failures() const;
    /** Tests whose names begin with "SUITE / ". */
    size_t countOf(const std::string& suite) const;
};

} // namespace hosts
