// GoldenBytes: a file of tests/golden/, which holds a state or a preset file byte by byte.
#pragma once

#include <string>

namespace doubles {

/** The bytes of tests/golden/NAME.hex. Throws std::runtime_error when there are none. */
std::string goldenBytes(const std::string& name);

} // namespace doubles
