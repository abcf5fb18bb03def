// play: plays a MIDI file through the plug-in, as a host would.
#include "tools/common/Program.h"
#include "tools/common/ToolName.h"
#include "tools/play/page/Page.h"
#include "tools/play/Session.h"

#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

using namespace Steinberg::Vst::play;
using Steinberg::Vst::tools::toolName;

int playAsAsked(int argc, char** argv)
{
    const auto options = parseOptions(argc, argv);
    std::optional<Song> song; // first, so that a wrong name is told before the plug-in is loaded
    if (!options.song.empty())
        song.emplace(options.song);
    else if (options.live)
        song.emplace(); // an empty one: only the keyboard plays
    Session session(options);
    if (options.listParameters)
        session.parameters().print(std::cout);
    const auto studio = session.studio();
    const auto hasStudio = studio.ports || studio.tracks;
    if (hasStudio && !options.json)
        std::cout << textOf(studio);
    if (!song) {
        if (hasStudio && options.json)
            std::cout << jsonOf(studio) << '\n';
        return std::cout.flush() ? 0 : 1;
    }
    auto report = session.play(*song, isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr);
    report.studio = studio;
    if (!options.report.empty()) {
        report.pageFile = options.report;
        writePage(report);
    }
    std::cout << (options.json ? jsonOf(report) + "\n" : textOf(report));
    return std::cout.flush() ? 0 : 1;
}

int run(int argc, char** argv)
{
    try {
        return playAsAsked(argc, argv);
    } catch (const Steinberg::Vst::tools::NoEditorLibrary& missing) {
        throw Steinberg::Vst::tools::Failure(
            std::string(missing.what()) + " " + toolName("check-library") + " tells why; " +
            toolName("with-simulator") + " runs a program with the simulated one.");
    }
}

} // namespace

int main(int argc, char** argv)
{
    return Steinberg::Vst::tools::runProgram("play", run, argc, argv);
}
