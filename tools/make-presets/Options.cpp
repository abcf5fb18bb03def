#include "tools/make-presets/Options.h"

#include "editorlib/EditorLibraryNames.h"
#include "tools/common/CommandLine.h"
#include "tools/common/ToolName.h"
#include "tools/common/VoiceWalk.h"

#include <CLI/CLI.hpp>
#include <set>

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

constexpr const char* kDescription =
    "Writes the synthesizer's voices as a library of VST 3 preset files, which hosts list in their "
    "media browser: one file a voice, and one a user bank.";

constexpr const char* kStatuses = "Exit status: 0 all went well, 1 some voice failed or nothing "
                                  "could be done, 2 the command line "
                                  "is wrong, 130 interrupted.";

} // namespace

Options parseOptions(int argc, const char* const* argv)
{
    Options options;
    options.library = editorLibraryPath();
    bool user = false;
    bool system = false;
    bool keep = false;
    std::vector<int> banks;

    CLI::App app(kDescription, tools::toolName("make-presets"));
    app.footer(kStatuses);
    app.add_option("--library", options.library, "The editor library")->capture_default_str();
    auto* userFlag =
        app.add_flag("--user", user, "Into the user's own library, which is the default");
    app.add_flag("--system", system, "Into the library of every user")->excludes(userFlag);
    app.add_option("--bank", banks, "Only this bank, 0 to 14; may be given several times")
        ->expected(1)
        ->take_all()
        ->check(
            CLI::Range(static_cast<int>(VoiceBank::kFirst), static_cast<int>(VoiceBank::kLast)));
    app.add_option("--exclude", options.excludedFile,
                   "A text file of names to leave out: one a line, as the preset file would be "
                   "called, without folder and extension");
    app.add_flag("--no-overwrite", keep, "Leave existing files as they are");
    app.add_flag("--dry-run", options.dryRun, "Say what would be written and write nothing");
    app.add_flag("--verbose", options.verbose, "Name every file");
    tools::readCommandLine(app, argc, argv);
    options.overwrite = !keep;
    if (system)
        options.folder = VstK2xPresetCreater::kSystemFolder;
    const std::set<int> sorted(banks.begin(), banks.end());
    options.banks =
        sorted.empty() ? tools::allBanks() : std::vector<int>(sorted.begin(), sorted.end());
    return options;
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
