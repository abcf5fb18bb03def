// CommandLine: how every tool reads its own.
#pragma once

namespace CLI {
class App;
}

namespace Steinberg {
namespace Vst {
namespace tools {

/** Reads the words into what the app's options are bound to, after giving it --version. Help, the
    version and complaints go to the standard streams.
    @throws CommandLineExit with 0 after help and version, with 2 for what makes no sense */
void readCommandLine(CLI::App& app, int argc, const char* const* argv);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
