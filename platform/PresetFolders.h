// Folders of the preset library: making them, and looking for files in them.
#pragma once

#include <string>

#if defined(__APPLE__)
struct FSRef; // the Carbon File Manager's; its header stays inside platform/mac/
#endif

namespace Steinberg {
namespace Vst {
namespace platform {

#if defined(__APPLE__)
/** The system's reference to a file or folder. */
using FolderRef = ::FSRef;
#else
/** A file or folder that was found or made. */
struct FolderRef {
    std::string path;
};
#endif

/** How long a path may be, in bytes and with its terminator. */
constexpr size_t kFolderPathSize = 1024;

/** Makes the folder path and every missing folder above it. Anything that already has one of the
    names counts as the folder, even a file or a dangling link.
    @param path UTF-8, at most kFolderPathSize - 1 bytes. Its top folder must exist: a path without
    a parent folder in it, such as "a" or "/a", fails
    @param ref set to the folder on success; may be null
    @return 0, or 1 when the path is too long or some folder could neither be found nor made
    [any thread; throws std::bad_alloc] */
int createFolder(const std::string& path, FolderRef* ref);

enum class InFolder {
    noFolder, ///< the folder itself cannot be found
    missing,
    exists, ///< as a file, a folder or anything else
};

/** Whether the folder has something with this name. @param name one UTF-8 file name
    [any thread; throws std::bad_alloc] */
InFolder findInFolder(const std::string& folder, const std::string& name);

} // namespace platform

#if !defined(__APPLE__)
/** The preset generator's interface has this name on every platform. */
using FSRef = platform::FolderRef;
#endif

} // namespace Vst
} // namespace Steinberg
