#include "tests/macos/fakes/FakeApplication.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#include <cstddef>

extern "C" id class_createInstance(Class cls, std::size_t extraBytes);

// GNU's run-time keeps its own tables until the end, which is its business.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() { return "leak:objc_malloc\n"; }

struct OpaqueEventRef {
    UInt32 kind;
};

namespace {

NSApplication* application;
NSEvent* event;
OpaqueEventRef carbonEvent;
EventRef reference;

void handle(bool isAnything, EventRef carbon) {
    static NSEvent* const theEvent = [NSEvent alloc];
    event = isAnything ? theEvent : nullptr;
    reference = carbon;
}

} // namespace

@implementation NSObject
+ (instancetype)alloc {
    return class_createInstance(self, 0);
}
@end

@implementation NSEvent
- (const void*)eventRef {
    return reference;
}
@end

@implementation NSApplication
+ (NSApplication*)sharedApplication {
    if (!application)
        application = [NSApplication alloc];
    return application;
}

- (NSEvent*)currentEvent {
    return event;
}
@end

UInt32 GetEventKind(EventRef asked) { return asked->kind; }

namespace doubles {

void FakeApplication::handleNothing() { handle(false, nullptr); }

void FakeApplication::handleEventWithoutReference() { handle(true, nullptr); }

void FakeApplication::handleEventOfKind(unsigned kind) {
    carbonEvent.kind = kind;
    handle(true, &carbonEvent);
}

} // namespace doubles
