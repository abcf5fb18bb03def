// Options: the command line of make-presets.
#pragma once

#include "presets/VstK2xPresetCreater.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace makepresets {

struct Options {
    std::string library; ///< file of the editor library
    VstK2xPresetCreater::OutputDir folder = VstK2xPresetCreater::kUserFolder;
    std::vector<int> banks;   ///< to write, ascending and each once
    std::string excludedFile; ///< of file names to leave out, one a line; empty for none
    bool overwrite = true;
    bool dryRun = false;
    bool verbose = false;
};

/** The command line was answered or refused already; the program ends with status. */
struct CommandLineExit {
    int status;
};

/** @throws CommandLineExit */
Options parseOptions(int argc, const char* const* argv);

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
