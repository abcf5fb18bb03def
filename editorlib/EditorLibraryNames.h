// The names by which the editor library is found: its file, its entry points and the service.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

constexpr const char* dllNameFront = "libvst_";
constexpr const char* dllNameBack = "_vstserver";
constexpr const char* libraryExtension = ".1.dylib"; ///< 1 is the version of the interface
constexpr const char* dllInstallPath = "/Library/Application Support/Tavrin/VST/";
constexpr const char* connectFuncName = "getVSTEditorConnectObject";
constexpr const char* observerFuncName = "getVSTObserverObject";
constexpr const char* kModelKeyLower = "rdl3_rdl5"; ///< in the file's name
constexpr const char* kModelKeyUpper = "RDL3_RDL5"; ///< in the folder's name
constexpr const char* kServiceKey = "UID";          ///< attribute of the host's component factory

/** The editor library's full path, the same on every platform. */
inline std::string editorLibraryPath()
{
    return std::string(dllInstallPath) + kModelKeyUpper + "/" + dllNameFront + kModelKeyLower +
           dllNameBack + libraryExtension;
}

} // namespace Vst
} // namespace Steinberg
