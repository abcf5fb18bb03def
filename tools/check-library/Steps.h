// Steps: what check-library tries with the library and the plug-in, each in a process of its own.
#pragma once

#include "tools/check-library/Journal.h"
#include "tools/check-library/Options.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** Tells the journal what it finds. A Failure that it throws becomes a bad finding, too. */
using StepFunction = void (*)(const Options& options, Journal& journal);

struct Step {
    const char* name;    ///< on the command line, and of findings about the step as a whole
    const char* subject; ///< at the beginning of a sentence
    const char* remedy;  ///< for a subject that crashes
    StepFunction run;
};

void loadBundle(const Options& options, Journal& journal);
void loadFile(const Options& options, Journal& journal);
void startLibrary(const Options& options, Journal& journal);
void askParameters(const Options& options, Journal& journal);
void askVoices(const Options& options, Journal& journal);
void playNote(const Options& options, Journal& journal);
void saveState(const Options& options, Journal& journal);
void usePlugIn(const Options& options, Journal& journal);
// In strict runs only:
void tryCallbacks(const Options& options, Journal& journal);
void tryThreads(const Options& options, Journal& journal);
void tryLives(const Options& options, Journal& journal);

/** The names of all steps, in the order in which they are taken. */
std::vector<std::string> stepNames();
/** @throws Failure for a name that is no step's */
const Step& stepNamed(const std::string& name);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
