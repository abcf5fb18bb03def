// AppKit's clipboard as far as the SDK names it. Known from Apple's reference of NSPasteboard.
#pragma once

#include <AppKit/AppKit.h>
#include <Foundation/Foundation.h>

extern NSString* const NSPasteboardTypeString;

@interface NSPasteboard : NSObject
+ (NSPasteboard*)generalPasteboard;
- (long)clearContents;
- (signed char)setString:(NSString*)text forType:(NSString*)type;
- (signed char)canReadItemWithDataConformingToTypes:(NSArray*)types;
- (NSArray*)readObjectsForClasses:(NSArray*)classes options:(NSDictionary*)options;
@end
