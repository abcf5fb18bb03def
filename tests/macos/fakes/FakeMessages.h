// The messages that the image sends to AppKit: to an application with a current event, as far as
// platform/mac/CurrentEvent.mm asks. Any other message ends the program.
#pragma once

namespace macho {

/** The application, which handles no event at first, handles one without a Carbon event. */
void handleEventWithoutReference();
/** It handles an event that a Carbon event of the kind stands behind. */
void handleEventOfKind(unsigned kind);

} // namespace macho
