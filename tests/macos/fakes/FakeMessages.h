// The messages that the image sends to AppKit: to an application with a current event, as far as
// platform/mac/CurrentEvent.mm asks. Any other message ends the program.
#pragma once

namespace macho {

/** The application handles an event that no Carbon event stands behind. At first it handles none. */
void handleEventWithoutReference();
/** It handles an event with a Carbon event of the kind behind it. */
void handleEventOfKind(unsigned kind);

} // namespace macho
