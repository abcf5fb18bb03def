#include "tools/play/host/EditorLibrary.h"

#include "tools/common/Failure.h"

#include <dlfcn.h>
#include <filesystem>

namespace Steinberg {
namespace Vst {
namespace play {

EditorLibrary::EditorLibrary(const std::string& path)
: library(nullptr)
, entry(nullptr)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw tools::Failure("The editor library \"" + path + "\" is missing.");
    library = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!library)
        throw tools::Failure("The editor library \"" + path + "\" cannot be loaded.");
    entry = reinterpret_cast<void (*)(VstIEditorConnect**)>(
        dlsym(library, "getVSTEditorConnectObject"));
    if (entry)
        return;
    dlclose(library);
    throw tools::Failure("\"" + path + "\" is not an editor library.");
}

EditorLibrary::~EditorLibrary()
{
    dlclose(library);
}

VstIEditorConnect* EditorLibrary::connect() const
{
    VstIEditorConnect* connection = nullptr;
    entry(&connection);
    return connection;
}

bool EditorLibrary::isLoaded(const std::string& path)
{
    auto* handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (!handle)
        return false;
    dlclose(handle);
    return true;
}

std::string installedEditorLibrary()
{
    return "/Library/Application Support/Tavrin/VST/RDL3_RDL5/"
           "libvst_rdl3_rdl5_vstserver.1.dylib";
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
