// Core Foundation as far as this plug-in and the SDK sources in it use it. Types, constants and
// signatures are known from the headers that Apple has published with Core Foundation's sources and
// in Swift's swift-corelibs-foundation: CFBase.h, CFString.h, CFRunLoop.h, CFBundle.h, CFURL.h,
// CFUUID.h, CFError.h. CFUUIDBytes has sixteen members of one byte there and an array of them here,
// which is passed alike. arc_cf_code_audited and CFSTR are as clang documents and compiles them.
#pragma once

#include <MacTypes.h>
#include <stdarg.h>
#include <stdbool.h>
#include <string.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef signed long CFIndex;
typedef unsigned long CFOptionFlags;
typedef double CFTimeInterval;
typedef CFTimeInterval CFAbsoluteTime;
typedef UInt32 CFStringEncoding;
typedef CFIndex CFComparisonResult;
typedef CFOptionFlags CFStringCompareFlags;
typedef CFIndex CFStringNormalizationForm;
typedef CFIndex CFURLPathStyle;

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef struct __CFString* CFMutableStringRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFError* CFErrorRef;
typedef const struct __CFLocale* CFLocaleRef;
typedef const struct __CFURL* CFURLRef;
typedef const struct __CFUUID* CFUUIDRef;
typedef struct __CFBundle* CFBundleRef;
typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct __CFRunLoopTimer* CFRunLoopTimerRef;
typedef CFStringRef CFRunLoopMode;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length)
{
    CFRange range = {location, length};
    return range;
}

typedef struct {
    UInt8 bytes[16];
} CFUUIDBytes;

typedef struct {
    CFIndex version;
    void* info;
    const void* (*retain)(const void* info);
    void (*release)(const void* info);
    CFStringRef (*copyDescription)(const void* info);
} CFRunLoopTimerContext;

typedef void (*CFRunLoopTimerCallBack)(CFRunLoopTimerRef timer, void* info);

enum {
    kCFCompareLessThan = -1,
    kCFCompareEqualTo = 0,
    kCFCompareGreaterThan = 1,
    kCFCompareCaseInsensitive = 1,
    kCFURLPOSIXPathStyle = 0,
    kCFStringNormalizationFormD = 0,
    kCFStringNormalizationFormKD = 1,
    kCFStringNormalizationFormC = 2,
    kCFStringNormalizationFormKC = 3
};

enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingUTF16 = 0x0100,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUTF8 = 0x08000100
};

extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFAllocatorRef kCFAllocatorNull;
extern const CFRunLoopMode kCFRunLoopCommonModes;
extern const CFRunLoopMode kCFRunLoopDefaultMode;

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFIndex CFGetRetainCount(CFTypeRef object);

// An NSURL may be given here without saying who owns it.
#ifdef __OBJC__
#pragma clang arc_cf_code_audited begin
#endif
CFArrayRef CFBundleCopyExecutableArchitecturesForURL(CFURLRef);
#ifdef __OBJC__
#pragma clang arc_cf_code_audited end
#endif

CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef);
CFBundleRef CFBundleGetMainBundle(void);
CFURLRef CFBundleCopyBundleURL(CFBundleRef);
Boolean CFBundleLoadExecutable(CFBundleRef);
Boolean CFBundleLoadExecutableAndReturnError(CFBundleRef, CFErrorRef* error);
void CFBundleUnloadExecutable(CFBundleRef);
void* CFBundleGetFunctionPointerForName(CFBundleRef, CFStringRef name);
CFStringRef CFErrorCopyDescription(CFErrorRef);
CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* path, CFIndex length,
                                                 Boolean isDirectory);
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, CFURLPathStyle,
                                       Boolean isDirectory);
Boolean CFURLGetFileSystemRepresentation(CFURLRef, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex size);

#ifdef __MACH__
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))
#else
#define CFSTR(text) CFStringCreateWithCString(kCFAllocatorDefault, text, kCFStringEncodingASCII)
#endif
CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex size,
                                    CFStringEncoding, Boolean isExternal);
CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef, const UniChar* units, CFIndex length,
                                               CFAllocatorRef contentsDeallocator);
CFStringRef CFStringCreateWithFormat(CFAllocatorRef, CFDictionaryRef, CFStringRef format, ...);
CFStringRef CFStringCreateWithFormatAndArguments(CFAllocatorRef, CFDictionaryRef,
                                                 CFStringRef format, va_list);
CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex maxLength);
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex maxLength, CFStringRef);
CFMutableStringRef CFStringCreateMutableWithExternalCharactersNoCopy(CFAllocatorRef, UniChar* units,
                                                                     CFIndex length,
                                                                     CFIndex capacity,
                                                                     CFAllocatorRef external);
CFIndex CFStringGetLength(CFStringRef);
void CFStringGetCharacters(CFStringRef, CFRange, UniChar* buffer);
CFIndex CFStringGetBytes(CFStringRef, CFRange, CFStringEncoding, UInt8 lossByte, Boolean isExternal,
                         UInt8* buffer, CFIndex size, CFIndex* usedSize);
Boolean CFStringGetCString(CFStringRef, char* buffer, CFIndex size, CFStringEncoding);
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding);
double CFStringGetDoubleValue(CFStringRef);
SInt32 CFStringGetIntValue(CFStringRef);
CFComparisonResult CFStringCompare(CFStringRef, CFStringRef, CFStringCompareFlags);
CFComparisonResult CFStringCompareWithOptions(CFStringRef, CFStringRef, CFRange,
                                              CFStringCompareFlags);
CFIndex CFStringFindAndReplace(CFMutableStringRef, CFStringRef find, CFStringRef replacement,
                               CFRange, CFStringCompareFlags);
void CFStringAppendCharacters(CFMutableStringRef, const UniChar* units, CFIndex length);
void CFStringAppendCString(CFMutableStringRef, const char* text, CFStringEncoding);
void CFStringLowercase(CFMutableStringRef, CFLocaleRef);
void CFStringUppercase(CFMutableStringRef, CFLocaleRef);
void CFStringNormalize(CFMutableStringRef, CFStringNormalizationForm);

CFUUIDRef CFUUIDCreate(CFAllocatorRef);
CFUUIDBytes CFUUIDGetUUIDBytes(CFUUIDRef);

CFAbsoluteTime CFAbsoluteTimeGetCurrent(void);
CFRunLoopRef CFRunLoopGetCurrent(void);
CFRunLoopRef CFRunLoopGetMain(void);
SInt32 CFRunLoopRunInMode(CFRunLoopMode, CFTimeInterval seconds, Boolean returnAfterOneSource);
CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime first,
                                       CFTimeInterval interval, CFOptionFlags, CFIndex order,
                                       CFRunLoopTimerCallBack, CFRunLoopTimerContext*);
void CFRunLoopTimerSetTolerance(CFRunLoopTimerRef, CFTimeInterval);
void CFRunLoopAddTimer(CFRunLoopRef, CFRunLoopTimerRef, CFRunLoopMode);
void CFRunLoopRemoveTimer(CFRunLoopRef, CFRunLoopTimerRef, CFRunLoopMode);
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef);

#ifdef __cplusplus
}
#endif
