// make-presets: writes the synthesizer's voices as a library of preset files.
#include "tools/common/Interruption.h"
#include "tools/common/Program.h"
#include "tools/common/ProgressBar.h"
#include "tools/make-presets/EditorConnection.h"
#include "tools/make-presets/ExcludedNames.h"
#include "tools/make-presets/Options.h"
#include "tools/make-presets/PresetWriter.h"
#include "tools/make-presets/Summary.h"

#include <iostream>
#include <unistd.h>

namespace {

using namespace Steinberg::Vst;
using namespace Steinberg::Vst::makepresets;

constexpr int kInterruptedStatus = 130;

/** Writes the voices in order until the end, an interruption, or a failure that would meet all that
    follow. @return how many it tried */
size_t writeAll(const std::vector<tools::Voice>& voices, PresetWriter& writer,
                const Options& options, Summary& summary)
{
    tools::ProgressBar bar(isatty(STDERR_FILENO) != 0 ? &std::cerr : nullptr);
    const auto all = static_cast<double>(voices.size());
    size_t done = 0;
    while (done < voices.size() && !tools::isInterrupted()) {
        bar.show(static_cast<double>(done), all);
        const auto& voice = voices[done++];
        const auto result = writer.write(voice);
        summary.add(voice, result);
        if (options.verbose && result.outcome == Outcome::written) {
            bar.wipe();
            std::cout << tools::printable(result.fileName) << ".vstpreset\n";
        }
        if (result.hopeless)
            break;
    }
    return done;
}

int run(int argc, char** argv)
{
    const auto options = parseOptions(argc, argv);
    auto excluded = readExcludedNames(options.excludedFile);
    const EditorConnection library(options.library);
    const PresetFolder folder(options.folder, !options.dryRun);
    tools::noticeInterruption();

    VstK2xPresetCreater creater(library.get());
    const auto voices = tools::collectVoices(creater, options.banks, tools::isInterrupted);
    PresetWriter writer(library.get(), folder, std::move(excluded), options.overwrite,
                        options.dryRun);
    Summary summary;
    const auto done = writeAll(voices, writer, options, summary);

    for (const auto& sentence : summary.remarks())
        std::cerr << "make-presets: " << sentence << '\n';
    std::cout << summary.text(folder.path(), voices.size() - done, options.dryRun);
    if (tools::isInterrupted()) {
        std::cerr << "make-presets: Interrupted; what is written is whole.\n";
        return kInterruptedStatus;
    }
    return !summary.hasFailures() && std::cout.flush() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    return tools::runProgram("make-presets", run, argc, argv);
}
