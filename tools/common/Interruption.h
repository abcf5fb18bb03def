// Interruption: Ctrl-C and a request to terminate, noticed where a tool can end in order.
#pragma once

namespace Steinberg {
namespace Vst {
namespace tools {

/** From now on the two signals only set a mark; a second one ends the program at once. */
void noticeInterruption();
bool isInterrupted();

} // namespace tools
} // namespace Vst
} // namespace Steinberg
