// The application and the event that it is handling. Known from Apple's AppKit reference:
// NSApplication (sharedApplication, currentEvent), NSEvent (eventRef); GNUstep's AppKit declares
// them alike.
#pragma once

#include <objc/NSObject.h>

@interface NSEvent : NSObject
@property(readonly) const void* eventRef;
@end

@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(readonly, strong) NSEvent* currentEvent;
@end
