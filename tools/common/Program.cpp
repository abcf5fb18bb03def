#include "tools/common/Program.h"

#include <exception>
#include <iostream>

namespace Steinberg {
namespace Vst {
namespace tools {

int runProgram(const char* name, int (*run)(int argc, char** argv), int argc, char** argv) noexcept
{
    try {
        return run(argc, argv);
    } catch (const CommandLineExit& exit) {
        return exit.status;
    } catch (const std::exception& error) {
        std::cerr << name << ": " << error.what() << '\n';
    } catch (...) {
        std::cerr << name << ": something went wrong that has no name.\n";
    }
    return 1;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
