// What check-library's user can do, where several findings have the same remedy.
#pragma once

namespace Steinberg {
namespace Vst {
namespace checklibrary {

constexpr const char* kInstallEditor =
    "Install the editor of your instrument again, in its newest version for this system.";

constexpr const char* kTellMaker =
    "This is a fault of the editor library: install its newest version, and if it has that "
    "already, send this report to its maker.";

constexpr const char* kInstallPlugIn = "Install the plug-in again.";

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
