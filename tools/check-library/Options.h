// Options: the command line of check-library.
#pragma once

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

struct Options {
    std::string library; ///< the editor library's file
    std::string plugIn;  ///< the bundle
    bool strict = false;
    bool json = false;
    double timeLimit = 10;         ///< seconds for one call into the library
    std::vector<std::string> only; ///< names of the steps to take; empty: all
    std::string step;              ///< the one step that this process is to do; empty: all of them

    /** Whether the library is the one that the plug-in itself would load. */
    bool checksInstalledLibrary() const;
    bool takes(const std::string& stepName) const;
};

/** Reads the command line; help and complaints go to the standard streams.
    @throws tools::CommandLineExit as tools::readCommandLine does */
Options parseOptions(int argc, const char* const* argv);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
