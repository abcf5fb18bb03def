// Making a folder and its missing parents, the same on every platform.
#pragma once

#include "platform/PresetFolders.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace platform {

/** Does what createFolder in PresetFolders.h says, by the calls of one system. @return success
    @tparam System has the type Ref, a reference to a folder, and two static functions that return
    true on success:
        bool find(const std::string& path, Ref& ref)
        bool findOrMake(const Ref& parent, const std::string& leaf, Ref& ref) */
template <typename System>
bool makeFolders(const std::string& path, typename System::Ref& ref)
{
    if (path.size() >= kFolderPathSize)
        return false;
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return false;
    const auto parentPath = path.substr(0, slash);
    const auto leaf = path.substr(slash + 1);
    typename System::Ref parent = {};
    if (!System::find(parentPath, parent) && !makeFolders<System>(parentPath, parent))
        return false;
    return System::findOrMake(parent, leaf, ref);
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
