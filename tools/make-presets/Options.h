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

/** Reads the command line; help and complaints go to the standard streams.
    @throws tools::CommandLineExit as tools::readCommandLine does */
Options parseOptions(int argc, const char* const* argv);

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
