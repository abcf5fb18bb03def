// PlayProgram: runs the built play from outside, as its user does.
#pragma once

#include "tests/tools/ScratchFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace doubles {

struct Outcome {
    int status; ///< exit status, or -1 when a signal ended the program
    std::string out;
    std::string err;
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

/** Runs play on the machine as it is. */
Outcome playOnThisMachine(const Words& arguments);

/** The JSON report of a run, which must succeed and say nothing on the error stream. */
nlohmann::json playReport(Words arguments, Outcome (*program)(const Words&) = runPlay);

/** Expects that a program failed, with one sentence for its user that has these words: a status
    other than 0, one line on the error stream and nothing on the standard output. */
void expectSentence(const Outcome& outcome, const std::string& words);

/** Has a song of twelve seconds: at the start a program change on channel 1 and notes on channels 1
    and 10, at the end their note-offs, the second one as a note-on of velocity 0. */
class PlayTest : public testing::Test {
protected:
    PlayTest();

    /** playReport of the song with these options. */
    nlohmann::json report(Words options) const;

    ScratchFolder folder;
    const std::string song;
};

} // namespace doubles
