// play: plays a MIDI file through the plug-in, as a host would.
#include "tools/play/Failure.h"
#include "tools/play/Session.h"

#include <iostream>
#include <unistd.h>

namespace {

using namespace Steinberg::Vst::play;

int run(const Options& options)
{
    Session session(options);
    if (options.listParameters)
        session.parameters().print(std::cout);
    if (options.song.empty())
        return 0;
    const auto report = session.play(isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr);
    std::cout << (options.json ? jsonOf(report) + "\n" : textOf(report));
    return std::cout.flush() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(parseOptions(argc, argv));
    } catch (const CommandLineExit& exit) {
        return exit.status;
    } catch (const std::exception& error) {
        std::cerr << "play: " << error.what() << '\n';
    } catch (...) {
        std::cerr << "play: something went wrong that has no name.\n";
    }
    return 1;
}
