// Objective-C messages by Apple's Objective-C Runtime reference: objc_msgSend gets the receiver and
// the selector, whose name clang writes into the image.
#include "tests/macos/fakes/FakeMessages.h"

#include "tests/macos/loader/DarwinCall.h"

#include <cstring>
#include <MacTypes.h>
#include <string>

namespace {

struct CarbonEvent {
    UInt32 kind;
};

char theApplication;
char theEvent;
CarbonEvent carbonEvent = {0};
const char* event = nullptr;
const CarbonEvent* reference = nullptr;

} // namespace

/** The class object. Only its address is used. */
extern "C" {
__attribute__((visibility("hidden"))) extern char
    applicationClass[] __asm__("OBJC_CLASS_$_NSApplication");
char applicationClass[8] = {};
}

void macho::handleEventWithoutReference()
{
    event = &theEvent;
    reference = nullptr;
}

void macho::handleEventOfKind(unsigned kind)
{
    carbonEvent.kind = kind;
    event = &theEvent;
    reference = &carbonEvent;
}

/** Apple's run-time makes selectors unique pointers when it loads an image; here a selector still
    points to its name. A message to nil gives nil. */
DARWIN_CALL(const void*, objc_msgSend)(const void* receiver, const char* selector)
{
    const auto is = [&](const void* object, const char* name) {
        return receiver == object && std::strcmp(selector, name) == 0;
    };
    if (!receiver)
        return nullptr;
    if (is(applicationClass, "sharedApplication"))
        return &theApplication;
    if (is(&theApplication, "currentEvent"))
        return event;
    if (is(event, "eventRef"))
        return reference;
    macho::endProgram(
        (std::string("a message that its receiver does not know: ") + selector).c_str(), receiver);
}

DARWIN_CALL(UInt32, GetEventKind)(const CarbonEvent* asked)
{
    return asked->kind;
}
