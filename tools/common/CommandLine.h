// CommandLine: how every tool reads its command line.
#pragma once

namespace CLI {
class App;
}

namespace Steinberg {
namespace Vst {
namespace tools {

/** Reads the arguments into the variables of the app's options, after adding --version. Help, the
    version and complaints go to the standard streams.
    @throws CommandLineExit with 0 after help and version, with 2 for what makes no sense */
void readCommandLine(CLI::App& app, int argc, const char* const* argv);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
