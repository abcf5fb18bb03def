// Program: how a command-line tool runs and ends.
#pragma once

namespace Steinberg {
namespace Vst {
namespace tools {

/** Ends the program once its command line was answered (help, version) or refused. */
struct CommandLineExit {
    int status;
};

/** What main does: runs the tool and gives its exit status. Any
    exception but CommandLineExit becomes one line on the standard error stream, "NAME: the reason",
    and status 1.
    @param name in the build folder, see toolName */
int runProgram(const char* name, int (*run)(int argc, char** argv), int argc, char** argv) noexcept;

} // namespace tools
} // namespace Vst
} // namespace Steinberg
