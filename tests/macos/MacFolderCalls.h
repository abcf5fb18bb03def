// The macOS side of platform/PresetFolders.h for tests. Its reference type is the Mac's own, which
// only sources that are compiled as the Mac's can name.
#pragma once

#include <string>

namespace doubles {

/** createFolder. @param found when not null: whether the reference that it gave leads to the
   folder, which is to say that a name can be looked for in it. */
int createMacFolder(const std::string& path, bool* found);
/** createFolder without a reference. */
int createMacFolder(const std::string& path);

enum class MacFolderAnswer { noFolder, missing, exists };
MacFolderAnswer findInMacFolder(const std::string& folder, const std::string& name);

} // namespace doubles
