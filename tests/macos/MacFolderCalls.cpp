#include "tests/macos/MacFolderCalls.h"

#include "platform/PresetFolders.h"

#include <CoreServices/CoreServices.h>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace doubles {

using namespace Steinberg::Vst;

int createMacFolder(const std::string& path, bool* found)
{
    FSRef ref = {};
    const int result = platform::createFolder(path, &ref);
    // A folder with a new name can be made only if the reference leads to a folder.
    const UniChar name[] = {'p', 'r', 'o', 'b', 'e'};
    FSRef probe = {};
    *found = FSCreateDirectoryUnicode(&ref, 5, name, kFSCatInfoNone, nullptr, &probe, nullptr,
                                      nullptr) == noErr;
    return result;
}

int createMacFolder(const std::string& path)
{
    return platform::createFolder(path, nullptr);
}

MacFolderAnswer findInMacFolder(const std::string& folder, const std::string& name)
{
    switch (platform::findInFolder(folder, name)) {
    case platform::InFolder::noFolder:
        return MacFolderAnswer::noFolder;
    case platform::InFolder::missing:
        return MacFolderAnswer::missing;
    default:
        return MacFolderAnswer::exists;
    }
}

} // namespace doubles
