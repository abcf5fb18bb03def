// ExcludedNames: the file of names to leave out.
#pragma once

#include <set>
#include <string>

namespace Steinberg {
namespace Vst {
namespace makepresets {

/** The file's lines, without their line ends and without empty ones; none for an empty path.
    @throws Failure when the file cannot be read */
std::set<std::string> readExcludedNames(const std::string& path);

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
