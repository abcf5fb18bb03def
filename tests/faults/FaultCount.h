// FaultCount: how many faults of which kind were tried.
#pragma once

#include "tests/faults/FaultKinds.h"

namespace faults {

/** One more; the host's and the library's answers are told apart by what the operation returns. */
void count(const std::string& scenario, const Fault& fault);

/** A line for a scenario; and when the program ends, one for all. */
void printCount(const std::string& scenario);

} // namespace faults
