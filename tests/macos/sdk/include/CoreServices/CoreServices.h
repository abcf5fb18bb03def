// The File Manager's references to files and folders. All of them are deprecated since macOS 10.8
// and declared so, which makes a call outside platform/mac/PresetFolders.cpp a compiler error.
// Known from Apple's File Manager reference and Technical Note TN2078 (Files.h: FSRef's 80 bytes,
// the signatures), and from its headers MacErrors.h (dupFNErr) and TextCommon.h (TextEncoding,
// kTextEncodingUnknown).
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct FSRef {
    UInt8 hidden[80];
} FSRef;
typedef struct FSCatalogInfo FSCatalogInfo;
typedef struct FSSpec* FSSpecPtr;
typedef UInt32 FSCatalogInfoBitmap;
typedef UInt32 TextEncoding;

enum { kTextEncodingUnknown = 0xFFFF, kFSCatInfoNone = 0, dupFNErr = -48 };

#define FILE_MANAGER_DEPRECATED __attribute__((deprecated("use NSURL or CFURL")))
OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean* isDirectory) FILE_MANAGER_DEPRECATED;
OSErr FSMakeFSRefUnicode(const FSRef* parent, UniCharCount length, const UniChar* name,
                         TextEncoding hint, FSRef* ref) FILE_MANAGER_DEPRECATED;
OSErr FSCreateDirectoryUnicode(const FSRef* parent, UniCharCount length, const UniChar* name,
                               FSCatalogInfoBitmap which, const FSCatalogInfo* info, FSRef* ref,
                               FSSpecPtr spec, UInt32* id) FILE_MANAGER_DEPRECATED;

#ifdef __cplusplus
}
#endif
