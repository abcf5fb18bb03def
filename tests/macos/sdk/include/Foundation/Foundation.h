// Foundation as far as the SDK's Objective-C++ files name it. Known from Apple's reference of each
// class; NSFastEnumerationState is what clang compiles "for (... in ...)" to. What is compiled
// against this runs in no test.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/NSObject.h>
#include <unistd.h>

@class NSDictionary;
@class NSError;
@class NSURL;

@interface NSString : NSObject
@property(readonly) NSString* lastPathComponent;
@property(readonly) NSString* pathExtension;
+ (instancetype)stringWithUTF8String:(const char*)text;
- (const char*)UTF8String;
- (signed char)isEqualToString:(NSString*)text;
@end

@interface NSNumber : NSObject
@property(readonly) signed char boolValue;
@end

// What "for (... in ...)" asks of an object.
typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (unsigned long)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                     objects:(id __unsafe_unretained*)buffer
                                       count:(unsigned long)length;
@end

@interface NSArray : NSObject <NSFastEnumeration>
@property(readonly) unsigned long count;
+ (instancetype)arrayWithObjects:(const id*)objects count:(unsigned long)count;
- (id)objectAtIndexedSubscript:(unsigned long)index;
@end

extern NSString* const NSURLIsSymbolicLinkKey;
extern NSString* const NSURLIsDirectoryKey;

@interface NSURL : NSObject
@property(readonly) NSString* path;
@property(readonly) NSString* lastPathComponent;
@property(readonly) NSURL* URLByResolvingSymlinksInPath;
@property(readonly) const char* fileSystemRepresentation;
+ (NSURL*)fileURLWithPath:(NSString*)path;
- (NSURL*)URLByAppendingPathComponent:(NSString*)name;
- (signed char)getResourceValue:(id*)value forKey:(NSString*)key error:(NSError**)error;
- (signed char)checkResourceIsReachableAndReturnError:(NSError**)error;
@end

@interface NSDirectoryEnumerator : NSObject <NSFastEnumeration>
@end

typedef enum { NSLibraryDirectory = 5 } NSSearchPathDirectory;
typedef enum { NSUserDomainMask = 1, NSLocalDomainMask = 2 } NSSearchPathDomainMask;
typedef enum { NSDirectoryEnumerationSkipsPackageDescendants = 2 } NSDirectoryEnumerationOptions;

@interface NSFileManager : NSObject
@property(class, readonly) NSFileManager* defaultManager;
- (NSDirectoryEnumerator*)enumeratorAtURL:(NSURL*)folder
               includingPropertiesForKeys:(NSArray*)keys
                                  options:(NSDirectoryEnumerationOptions)options
                             errorHandler:(signed char (^)(NSURL*, NSError*))handler;
- (NSURL*)URLForDirectory:(NSSearchPathDirectory)folder
                 inDomain:(NSSearchPathDomainMask)domain
        appropriateForURL:(NSURL*)url
                   create:(signed char)create
                    error:(NSError**)error;
@end

@interface NSBundle : NSObject
+ (NSArray*)URLsForResourcesWithExtension:(NSString*)extension
                             subdirectory:(NSString*)folder
                          inBundleWithURL:(NSURL*)bundle;
+ (NSURL*)URLForResource:(NSString*)name
           withExtension:(NSString*)extension
            subdirectory:(NSString*)folder
         inBundleWithURL:(NSURL*)bundle;
@end

#ifdef __cplusplus
extern "C" {
#endif

void NSLog(NSString* format, ...);

static inline id CFBridgingRelease(CFTypeRef __attribute__((cf_consumed)) object) {
#if __has_feature(objc_arc)
    return (__bridge_transfer id)object;
#else
    return (id)object;
#endif
}

#ifdef __cplusplus
}
#endif
