#include "platform/CurrentEvent.h"

// The Carbon event behind an NSEvent is deprecated, and used on purpose: the view halves the
// wheel's distance for Carbon's scroll event alone, and NSEvent's own type does not tell it from
// the older wheel event. Only this file asks for it.
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
