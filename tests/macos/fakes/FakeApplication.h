// An application with a current event, for GNU's Objective-C run-time.
#pragma once

namespace doubles {

class FakeApplication {
public:
    /** The application handles no event. */
    static void handleNothing();
    /** It handles an event that no Carbon event stands behind. */
    static void handleEventWithoutReference();
    /** It handles an event with a Carbon event of the kind behind it. */
    static void handleEventOfKind(unsigned kind);
};

} // namespace doubles
