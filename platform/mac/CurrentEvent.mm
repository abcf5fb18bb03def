#include "platform/CurrentEvent.h"

// The Carbon event behind an NSEvent is deprecated; it stays because the wheel's distances that are
// halved are those of the Carbon scroll event, which NSEvent's own type does not tell apart from
// the older wheel event. This is the only file that asks for it.
#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

namespace Steinberg {
namespace Vst {
namespace platform {

namespace {

/** kEventMouseScroll, the smooth scrolling of trackpads and newer mice. */
constexpr UInt32 kScrollEventKind = 11;

} // namespace

bool isCurrentEventScroll() {
    NSEvent* current = [[NSApplication sharedApplication] currentEvent];
    const void* reference = [current eventRef];
    if (!reference)
        return false;
    return GetEventKind(static_cast<EventRef>(const_cast<void*>(reference))) == kScrollEventKind;
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg

#pragma clang diagnostic pop
