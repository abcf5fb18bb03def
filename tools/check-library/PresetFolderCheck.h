// PresetFolderCheck: whether user banks and voices can be stored for the host's media browser.
#pragma once

#include "tools/check-library/Finding.h"

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** Writes a file into the user's preset folder, or where that would be made, and removes it. */
Finding checkPresetFolder();

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
