#include "tests/tools/PlayProgram.h"

#include "tests/tools/MidiBytes.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // no header of a Mac's declares it

namespace doubles {

namespace {

pid_t start(Words words, const std::string& out, const std::string& err)
{
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), flags, 0600);
    pid_t child = 0;
    const auto result =
        posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (result != 0)
        throw std::runtime_error(words[0] + " does not start");
    return child;
}

Outcome run(Words words, const Words& arguments)
{
    words.insert(words.end(), arguments.begin(), arguments.end());
    return doubles::run(words);
}

} // namespace

Outcome run(const Words& words)
{
    const ScratchFolder folder;
    const auto child = start(words, folder.file("out"), folder.file("err"));
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ScratchFolder::read(folder.file("out")),
            ScratchFolder::read(folder.file("err"))};
}

Outcome runPlay(const Words& arguments)
{
    return run({WITH_SIMULATOR, PLAY_PROGRAM}, arguments);
}

Outcome playWithoutLibrary(const Words& arguments)
{
    return run({WITH_SIMULATOR, "--no-library", PLAY_PROGRAM}, arguments);
}

Outcome playWithScriptedLibrary(const Words& arguments)
{
    return run({WITH_SIMULATOR, "--library", SCRIPTED_LIBRARY, PLAY_PROGRAM}, arguments);
}

Outcome playOnThisMachine(const Words& arguments)
{
    return run({PLAY_PROGRAM}, arguments);
}

nlohmann::json playReport(Words arguments, Outcome (*program)(const Words&))
{
    arguments.emplace_back("--json");
    const auto outcome = program(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return nlohmann::json::parse(outcome.out, nullptr, false);
}

void expectSentence(const Outcome& outcome, const std::string& words)
{
    EXPECT_GT(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.find('\n') + 1, outcome.err.size()) << outcome.err;
    EXPECT_THAT(outcome.err, testing::HasSubstr(words));
}

PlayTest::PlayTest()
: song(folder.write("song.mid", midiFile(480, MidiTrack()
                                                  .program(0, 0, 40)
                                                  .noteOn(0, 0, 60, 1)
                                                  .noteOn(0, 9, 36, 127)
                                                  .noteOff(24 * 480, 0, 60, 64)
                                                  .noteOn(0, 9, 36, 0))))
{
}

nlohmann::json PlayTest::report(Words options) const
{
    options.insert(options.begin(), song);
    return playReport(std::move(options));
}

} // namespace doubles
