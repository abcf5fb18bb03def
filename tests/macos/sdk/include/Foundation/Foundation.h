// Foundation as far as the SDK's Objective-C++ files name it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/NSObject.h>

@class NSArray;
@class NSDictionary;

@interface NSString : NSObject
+ (instancetype)stringWithUTF8String:(const char*)text;
- (const char*)UTF8String;
@end

@interface NSArray : NSObject
@property(readonly) unsigned long count;
+ (instancetype)arrayWithObjects:(const id*)objects count:(unsigned long)count;
- (id)objectAtIndexedSubscript:(unsigned long)index;
@end

#ifdef __cplusplus
extern "C"
#endif
    void
    NSLog(NSString* format, ...);
