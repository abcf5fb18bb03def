// The Mac's basic types for macOS sources in a Linux program, as in Apple's MacTypes.h for 64 bits,
// which scripts/fetch-darwin fetches.
#pragma once

typedef unsigned char UInt8;
typedef unsigned short UInt16;
typedef unsigned int UInt32;
typedef int SInt32;
typedef unsigned char Boolean;
typedef short OSErr;
typedef int OSStatus;
typedef UInt16 UniChar;
typedef unsigned long UniCharCount;

enum { noErr = 0 };
