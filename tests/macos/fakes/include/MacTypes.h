// The Mac's basic types, for compiling macOS sources into a Linux program: those of Apple's own
// MacTypes.h, which scripts/fetch-darwin fetches, in the sizes that it has for 64 bits.
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
