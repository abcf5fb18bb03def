// platform/PresetFolders.h as it is on a Mac, for tests. It uses the Mac's FSRef, which only
// sources that are compiled as for a Mac can name; these functions do without.
#pragma once

#include <string>

namespace doubles {

/** createFolder. @param found whether the reference that it gave leads to a folder. */
int createMacFolder(const std::string& path, bool* found);
/** createFolder without a reference. */
int createMacFolder(const std::string& path);

enum class MacFolderAnswer { noFolder, missing, exists };
MacFolderAnswer findInMacFolder(const std::string& folder, const std::string& name);

} // namespace doubles
