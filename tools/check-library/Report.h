// Report: the findings, for people and for programs.
#pragma once

#include "tools/check-library/Finding.h"
#include "tools/check-library/Options.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** Lines for a terminal. */
std::string textOf(const Findings& findings, const Options& options);

std::string reportJson(const Findings& findings, const Options& options);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
