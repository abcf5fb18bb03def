// Interruption: Ctrl-C and a request to terminate, noticed between two files.
#pragma once

namespace Steinberg {
namespace Vst {
namespace makepresets {

/** From now on the two signals only set a mark; a second one ends the program at once. Only files
    under hidden names can be half-written then. */
void noticeInterruption();
bool isInterrupted();

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
