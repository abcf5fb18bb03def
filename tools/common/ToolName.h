// ToolName: how the tools are called where they are installed.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** A tool's name as its user types it: "rdl3-rdl5-play" for "play" when the running program is
    installed under such a name itself, where other programs have the plain ones; else the same. */
std::string toolName(const std::string& tool);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
