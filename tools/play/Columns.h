// Columns: texts padded to the columns of a table.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** At least width columns, counting the characters and not the bytes of UTF-8. */
std::string padded(const std::string& text, size_t width);

} // namespace play
} // namespace Vst
} // namespace Steinberg
