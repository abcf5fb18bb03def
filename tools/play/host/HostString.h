// Texts that a plug-in filled into fixed buffers of its host.
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** A text as UTF-8, up to its terminator or, without one, the buffer's end. A lone surrogate
    becomes a question mark. */
std::string utf8(const String128& text);

} // namespace play
} // namespace Vst
} // namespace Steinberg
