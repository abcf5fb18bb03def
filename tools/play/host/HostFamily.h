// HostFamily: which host play pretends to be.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** What the plug-in can learn of its host. */
struct HostFamily {
    std::string name;        ///< "Cubase", "Nuendo", "Standalone", ...
    std::string version;     ///< "Version 7.5.1", or empty
    bool givesNames = false; ///< offers IHostApplicationW: name, version, character set
    bool isOlder = false;    ///< offers IHostApplicationA only
    bool isUnicode = false;  ///< texts are UTF-16, else 8-bit texts packed into the 16-bit units
    bool hasStudio = false;  ///< offers its ports and its project as extension objects

    /** "Cubase, Version 7.5.1, Unicode" */
    std::string description() const;
};

/** Reads a family from the command line: "cubase:7.5.1", "standalone", ...
    @param unicode whether a host that gives its names gives them in Unicode
    @throws Failure for an unknown family or a version that begins with no digit */
HostFamily parseHostFamily(const std::string& text, bool unicode);

/** Every word that parseHostFamily takes before the colon, separated by commas. */
std::string hostFamilyWords();

} // namespace play
} // namespace Vst
} // namespace Steinberg
