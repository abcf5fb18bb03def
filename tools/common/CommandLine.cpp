#include "tools/common/CommandLine.h"

#include "basics/PlugInInfo.h"
#include "tools/common/Program.h"

#include <CLI/CLI.hpp>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {
constexpr int kWrongUse = 2;
}

void readCommandLine(CLI::App& app, int argc, const char* const* argv)
{
    app.set_version_flag("--version", app.get_name() + " (" + kPlugInName + ") " + kPlugInVersion);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        throw CommandLineExit{app.exit(error) == 0 ? 0 : kWrongUse};
    }
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
