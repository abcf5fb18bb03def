// The mark that macOS puts on files from the network.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** Whether the system keeps the file apart until its user has agreed to it; false on systems
    without such a mark. */
bool isQuarantined(const std::string& file);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
