// Answers the Objective-C messages that platform/mac/CurrentEvent.mm sends to AppKit. Any other
// message ends the program.
#pragma once

namespace macho {

/** Makes the application's current event one without a Carbon event. At first there is none. */
void handleEventWithoutReference();
/** Makes the application's current event one with a Carbon event of this kind. */
void handleEventOfKind(unsigned kind);

} // namespace macho
