#include "tools/check-library/Options.h"

#include "editorlib/EditorLibraryNames.h"
#include "tools/check-library/Steps.h"
#include "tools/common/CommandLine.h"
#include "tools/common/PlugInPlaces.h"
#include "tools/common/ToolName.h"

#include <algorithm>
#include <CLI/CLI.hpp>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

constexpr const char* kDescription =
    "Does with the editor library what the RDL3/RDL5 VST plug-in does with it, and tells what went "
    "wrong: where that library cannot be used, the plug-in stays empty and says nothing. Each part "
    "of the library is tried in a process of its own. Plays one short note on part 1; restores the "
    "instrument's present sound. Writes a file into the preset folder and removes it at once.";

constexpr const char* kStatuses =
    "Exit status: 0 everything that the plug-in needs is there, 1 something is not, 2 the command "
    "line is wrong.";

} // namespace

bool Options::checksInstalledLibrary() const
{
    return library == editorLibraryPath();
}

bool Options::takes(const std::string& stepName) const
{
    return only.empty() || std::find(only.begin(), only.end(), stepName) != only.end();
}

Options parseOptions(int argc, const char* const* argv)
{
    Options options;
    options.library = editorLibraryPath();
    options.plugIn = tools::usualPlugIn();

    CLI::App app(kDescription, tools::toolName("check-library"));
    app.footer(kStatuses);
    app.add_option("--library", options.library,
                   "An editor library to check in place of the installed one")
        ->capture_default_str();
    app.add_option("--plugin", options.plugIn, "The plug-in bundle")
        ->default_str(tools::kUsualPlugIn);
    app.add_flag("--strict", options.strict,
                 "For those who write such a library: also hold it to every word of the contract. "
                 "Plays thousands of notes, selects a voice and puts user banks back as they are");
    app.add_option("--only", options.only, "Take only this step; may be given several times")
        ->expected(1)
        ->take_all()
        ->check(CLI::IsMember(stepNames()));
    app.add_flag("--json", options.json, "Report in JSON");
    app.add_option("--time-limit", options.timeLimit,
                   "Seconds after which a call is taken to hang; a whole step may take ten times "
                   "as long")
        ->check(CLI::Range(0.1, 3600.0))
        ->capture_default_str();
    app.add_option("--step", options.step)->group(""); // for the processes that this one starts
    tools::readCommandLine(app, argc, argv);
    return options;
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
