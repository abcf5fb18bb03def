// The file of the program that runs.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

/** Its path without links; empty when the system does not tell. */
std::string programFile();

} // namespace tools
} // namespace Vst
} // namespace Steinberg
