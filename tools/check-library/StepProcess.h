// StepProcess: one step of the check, in a process of its own.
#pragma once

#include "tools/check-library/Finding.h"
#include "tools/check-library/Options.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

struct Step;

/** Runs the step in a new process of this program.
    @return its findings; if it crashed, hung or ended too early, the last one says in which call
    @throws Failure when the system starts no process */
std::vector<Finding> runStep(const Step& step, const Options& options);

/** What the new process does: it takes the step that its command line names, and nothing else. Its
    standard output is the journal; what the library prints goes to standard error. */
void takeStep(const Options& options);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
