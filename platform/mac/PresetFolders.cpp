#include "platform/PresetFolders.h"

#include "platform/FolderRecursion.h"

#include <CoreServices/CoreServices.h>

#include <memory>
#include <type_traits>
#include <vector>

// The File Manager's functions are deprecated, and used on purpose: they compare names as the
// volume does (case, composed and decomposed Unicode), which no replacement does by itself. Only
// this file calls them.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

namespace Steinberg {
namespace Vst {
namespace platform {
namespace {

struct Releaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};
using StringHolder = std::unique_ptr<std::remove_pointer_t<CFStringRef>, Releaser>;

/** A name in the UTF-16 units that the File Manager takes. */
class UnicodeName {
public:
    explicit UnicodeName(const std::string& name)
    {
        if (name.find('\0') != std::string::npos)
            return;
        const StringHolder text(
            CFStringCreateWithCString(kCFAllocatorDefault, name.c_str(), kCFStringEncodingUTF8));
        if (!text)
            return;
        const CFIndex length = CFStringGetLength(text.get());
        units.resize(static_cast<size_t>(length));
        if (length > 0)
            CFStringGetCharacters(text.get(), CFRangeMake(0, length), units.data());
    }

    /** False for an empty name and for bytes that are not UTF-8. */
    bool isUsable() const { return !units.empty(); }
    UniCharCount length() const { return static_cast<UniCharCount>(units.size()); }
    const UniChar* data() const { return units.data(); }

private:
    std::vector<UniChar> units;
};

struct Carbon {
    using Ref = FolderRef;

    /** Follows links, since the parent folder may be one. */
    static bool find(const std::string& path, FolderRef& ref)
    {
        if (path.empty() || path.find('\0') != std::string::npos)
            return false;
        const auto* bytes = reinterpret_cast<const UInt8*>(path.c_str());
        return FSPathMakeRef(bytes, &ref, nullptr) == noErr;
    }

    static bool findIn(const FolderRef& folder, const UnicodeName& name, FolderRef& ref)
    {
        return FSMakeFSRefUnicode(&folder, name.length(), name.data(), kTextEncodingUnknown,
                                  &ref) == noErr;
    }

    static bool findOrMake(const FolderRef& parent, const std::string& leaf, FolderRef& ref)
    {
        const UnicodeName name(leaf);
        if (!name.isUsable())
            return false;
        if (findIn(parent, name, ref))
            return true;
        const OSErr result = FSCreateDirectoryUnicode(
            &parent, name.length(), name.data(), kFSCatInfoNone, nullptr, &ref, nullptr, nullptr);
        // Another program may have made it in between; then it is there as well.
        return result == noErr || (result == dupFNErr && findIn(parent, name, ref));
    }
};

} // namespace

int createFolder(const std::string& path, FolderRef* ref)
{
    FolderRef made = {};
    if (!makeFolders<Carbon>(path, made))
        return 1;
    if (ref)
        *ref = made;
    return 0;
}

InFolder findInFolder(const std::string& folder, const std::string& name)
{
    FolderRef parent = {};
    if (folder.size() >= kFolderPathSize || !Carbon::find(folder, parent))
        return InFolder::noFolder;
    const UnicodeName leaf(name);
    FolderRef found = {};
    const bool exists = leaf.isUsable() && Carbon::findIn(parent, leaf, found);
    return exists ? InFolder::exists : InFolder::missing;
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg

#pragma clang diagnostic pop
