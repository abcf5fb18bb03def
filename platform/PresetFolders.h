// Folders of the preset library: making them, and seeing what stands in them.
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
/** A file or folder that was found or made; what the Carbon FSRef is on macOS. */
struct FolderRef {
    std::string path;
};
#endif

/** How long a path may be, in bytes and with its terminator. */
constexpr size_t kFolderPathSize = 1024;

/** Makes the folder path and every folder above it that is missing. Whatever already stands at a
    name counts as found, a file or a dangling link too.
    @param path UTF-8, at most kFolderPathSize - 1 bytes. Its top folder has to exist: a path
    without "/" before its last name, such as "a" or "/a", has no parent to work in and fails
    @param ref set to the folder on success; may be null
    @return 0, or 1 when the path is too long or some folder could neither be found nor made
    [any thread; throws std::bad_alloc] */
int createFolder(const std::string& path, FolderRef* ref);

enum class InFolder {
    noFolder, ///< the folder itself cannot be found
    missing,
    exists, ///< as a file, a folder or anything else
};

/** Whether something of the name stands in the folder. @param name one UTF-8 file name
    [any thread; throws std::bad_alloc] */
InFolder findInFolder(const std::string& folder, const std::string& name);

} // namespace platform

#if !defined(__APPLE__)
/** The name by which the preset generator's interface knows it on every platform. */
using FSRef = platform::FolderRef;
#endif

} // namespace Vst
} // namespace Steinberg
