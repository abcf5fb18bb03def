// PlugInPlaces: where the plug-in's bundle is.
#pragma once

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace tools {

/** How help texts call what usualPlugIn gives. */
constexpr const char* kUsualPlugIn = "beside this program, else where hosts look";

/** The bundles in the folders in which hosts look for plug-ins, in a host's order. */
std::vector<std::string> installedPlugIns();

/** The bundle beside this program, where a build puts it; else the first installed one; else the
    path beside this program, where none is. */
std::string usualPlugIn();

} // namespace tools
} // namespace Vst
} // namespace Steinberg
