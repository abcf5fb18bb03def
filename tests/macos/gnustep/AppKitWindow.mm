#include "tests/macos/gnustep/AppKitWindow.h"

#include "pluginterfaces/base/keycodes.h"

#include <string>

#import <AppKit/AppKit.h>

// GNUstep has no Carbon events: eventRef gives the NSEvent itself, for GetEventKind below.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
@implementation NSEvent (Carbon)
- (const void*)eventRef {
    return self;
}
@end
#pragma clang diagnostic pop

extern "C" unsigned GetEventKind(NSEvent* event);
unsigned GetEventKind(NSEvent* event) {
    // kEventMouseDown and kEventMouseScroll of Carbon's CarbonEvents.h
    constexpr unsigned kMouseDown = 1;
    constexpr unsigned kScroll = 11;
    return [event type] == NSScrollWheel ? kScroll : kMouseDown;
}

namespace {

Steinberg::IPlugView* plugView;
NSWindow* window;
int scrollCount;
std::u16string typedKeys;
std::function<void()> atTimer;

struct Pool {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    ~Pool() { [pool release]; }
};

/** Passes the key's character to the view, or its code if it types none. */
void sendKey(NSEvent* event, bool isDown) {
    NSString* characters = [event characters];
    Steinberg::char16 character = [characters length] > 0 ? [characters characterAtIndex:0] : 0;
    if (isDown)
        typedKeys += character;
    Steinberg::int16 code = 0;
    if (character == NSCarriageReturnCharacter)
        code = Steinberg::KEY_RETURN;
    else if (character == NSLeftArrowFunctionKey)
        code = Steinberg::KEY_LEFT;
    if (code != 0)
        character = 0;
    isDown ? plugView->onKeyDown(character, code, 0) : plugView->onKeyUp(character, code, 0);
}

bool handleNext(NSDate* until) {
    NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                        untilDate:until
                                           inMode:NSDefaultRunLoopMode
                                          dequeue:YES];
    if (!event)
        return false;
    [NSApp sendEvent:event];
    if ([event type] == NSScrollWheel)
        ++scrollCount;
    return true;
}

} // namespace

@interface PlugInView : NSView
@end

@implementation PlugInView
- (BOOL)acceptsFirstResponder {
    return YES;
}
- (void)scrollWheel:(NSEvent*)event {
    plugView->onWheel(static_cast<float>([event deltaY]));
}
- (void)keyDown:(NSEvent*)event {
    sendKey(event, true);
}
- (void)keyUp:(NSEvent*)event {
    sendKey(event, false);
}
- (void)timerTick:(NSTimer*)timer {
    (void)timer;
    atTimer();
}
@end

namespace gnustep {

AppKitWindow::AppKitWindow(Steinberg::IPlugView& view) {
    const Pool pool;
    plugView = &view;
    scrollCount = 0;
    typedKeys.clear();
    [NSApplication sharedApplication];
    [NSApp finishLaunching];
    window = [[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, 2 * kViewWidth, kHeight)
                                         styleMask:NSTitledWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setTitle:[NSString stringWithUTF8String:kTitle]];
    NSView* inner =
        [[[PlugInView alloc] initWithFrame:NSMakeRect(0, 0, kViewWidth, kHeight)] autorelease];
    [[window contentView] addSubview:inner];
    [window makeFirstResponder:inner];
    [window makeKeyAndOrderFront:nil];
    view.attached(inner, Steinberg::kPlatformTypeNSView);
}

AppKitWindow::~AppKitWindow() {
    const Pool pool;
    plugView->removed();
    [window close];
    [window release];
    window = nil;
}

bool AppKitWindow::handleUntil(const std::function<bool()>& condition) {
    constexpr int kTenths = 600;
    for (int tenth = 0; tenth < kTenths && !condition(); ++tenth) {
        const Pool pool;
        handleNext([NSDate dateWithTimeIntervalSinceNow:0.1]);
    }
    return condition();
}

void AppKitWindow::handleFor(double seconds) {
    const Pool pool;
    NSDate* until = [NSDate dateWithTimeIntervalSinceNow:seconds];
    while (handleNext(until)) {
    }
}

void AppKitWindow::callFromTimer(std::function<void()> function) {
    const Pool pool;
    bool isDone = false;
    atTimer = [&] {
        function();
        isDone = true;
    };
    [NSTimer scheduledTimerWithTimeInterval:0.05
                                     target:[window firstResponder]
                                   selector:@selector(timerTick:)
                                   userInfo:nil
                                    repeats:NO];
    while (!isDone)
        handleFor(0.1);
}

bool AppKitWindow::isKey() const { return [window isKeyWindow]; }

std::u16string AppKitWindow::typed() const { return typedKeys; }

int AppKitWindow::scrolls() const { return scrollCount; }

} // namespace gnustep
