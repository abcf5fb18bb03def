// PlayProgram: runs the built play from outside, as its user does.
#pragma once

#include "tests/tools/ScratchFolder.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace doubles {

struct Outcome {
    int status; ///< exit status, or -1 when a signal ended the program
    std::string out;
    std::string err;

    /** Whether it failed as a program should: a status other than 0, one line on the error stream
        and nothing else. */
    bool isOneSentence() const;
};

using Words = std::vector<std::string>;

/** Runs the program that the first word names with the rest. */
Outcome run(const Words& words);

/** Runs play where the simulated editor library is installed. */
Outcome runPlay(const Words& arguments);

/** Runs play where no editor library is installed. */
Outcome playWithoutLibrary(const Words& arguments);

/** Runs play where another editor library than the simulated one is installed. */
Outcome playWithScriptedLibrary(const Words& arguments);

/** Runs play just so, on the machine as it is. */
Outcome playOnThisMachine(const Words& arguments);

/** The report in JSON of a run that must succeed, and say nothing on the error stream. */
nlohmann::json playReport(Words arguments, Outcome (*program)(const Words&) = runPlay);

} // namespace doubles
