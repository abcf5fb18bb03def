// The messages that the image sends to AppKit: to an application with a current event, as far as
// platform/mac/CurrentEvent.mm asks. Any other message ends the program.
#pragma once

namespace macho {

/** The kind of the Carbon event behind the application's current event; 0: it handles none. */
void setCurrentEvent(unsigned kind);

} // namespace macho
