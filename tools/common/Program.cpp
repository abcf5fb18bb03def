#include "tools/common/Program.h"

#include "tools/common/ToolName.h"

#include <exception>
#include <iostream>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {

/** Names the tool in full or, where there is no memory for that, by its short name. */
void complain(const char* name, const char* reason) noexcept
{
    try {
        std::cerr << toolName(name);
    } catch (const std::exception&) {
        std::cerr << name;
    }
    std::cerr << ": " << reason << '\n';
}

} // namespace

int runProgram(const char* name, int (*run)(int argc, char** argv), int argc, char** argv) noexcept
{
    try {
        return run(argc, argv);
    } catch (const CommandLineExit& exit) {
        return exit.status;
    } catch (const std::exception& error) {
        complain(name, error.what());
    } catch (...) {
        complain(name, "something went wrong that has no name.");
    }
    return 1;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
