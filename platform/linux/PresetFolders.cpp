#include "platform/PresetFolders.h"

#include "basics/Utf.h"
#include "platform/FolderRecursion.h"

#include <cerrno>
#include <sys/stat.h>

namespace Steinberg {
namespace Vst {
namespace platform {
namespace {

struct Posix {
    using Ref = FolderRef;

    /** Follows links, since the parent folder may be one. */
    static bool find(const std::string& path, FolderRef& ref)
    {
        struct stat status = {};
        if (hasNul(path) || stat(path.c_str(), &status) != 0)
            return false;
        ref.path = path;
        return true;
    }

    static bool findOrMake(const FolderRef& parent, const std::string& leaf, FolderRef& ref)
    {
        if (!isName(leaf))
            return false;
        const auto path = parent.path + "/" + leaf;
        // Another program may make it in between; then it is there as well.
        if (!exists(path) && mkdir(path.c_str(), 0777) != 0 && errno != EEXIST)
            return false;
        ref.path = path;
        return true;
    }

    /** Looks at a link itself, not at its target. */
    static bool exists(const std::string& path)
    {
        struct stat status = {};
        return lstat(path.c_str(), &status) == 0;
    }

    static bool hasNul(const std::string& text) { return text.find('\0') != std::string::npos; }

    /** Whether a file system that keeps Unicode names can have a file of this name. */
    static bool isName(const std::string& leaf)
    {
        return !leaf.empty() && !hasNul(leaf) && isUtf8(leaf);
    }
};

} // namespace

int createFolder(const std::string& path, FolderRef* ref)
{
    FolderRef made;
    if (!makeFolders<Posix>(path, made))
        return 1;
    if (ref)
        *ref = made;
    return 0;
}

InFolder findInFolder(const std::string& folder, const std::string& name)
{
    FolderRef ref;
    if (folder.size() >= kFolderPathSize || !Posix::find(folder, ref))
        return InFolder::noFolder;
    const bool found = !Posix::hasNul(name) && Posix::exists(ref.path + "/" + name);
    return found ? InFolder::exists : InFolder::missing;
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
