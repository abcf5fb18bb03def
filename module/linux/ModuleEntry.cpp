// The entry points that a Linux host calls after loading and before unloading the module.
#include "module/ModuleInit.h"
#include "pluginterfaces/base/fplatform.h"

#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <string>

extern "C" {

/** @param handle the host's handle of this shared library; may be null. Hosts may call this several
    times, each with its own ModuleExit. [host main thread] */
SMTG_EXPORT_SYMBOL bool ModuleEntry(void* handle);
SMTG_EXPORT_SYMBOL bool ModuleExit();
}

namespace {

/** The bundle folder of a file <bundle>/Contents/<architecture>/<file>, or empty. */
std::string bundleOf(std::string file)
{
    for (int level = 0; level < 3; ++level) {
        const auto slash = file.rfind('/');
        if (slash == std::string::npos)
            return {};
        file.erase(slash);
    }
    return file;
}

void readOwnPath()
{
    Dl_info info = {};
    if (dladdr(reinterpret_cast<void*>(&ModuleEntry), &info) == 0 || !info.dli_fname)
        return;
    // The loader's name of the file is as the host gave it, which may be from the host's folder.
    const auto file = std::filesystem::absolute(info.dli_fname).lexically_normal();
    const std::string bundle = bundleOf(file.string());
    if (bundle.size() < kMaxModulePath)
        std::memcpy(gPath, bundle.c_str(), bundle.size() + 1);
}

} // namespace

bool ModuleEntry(void* handle)
{
    // The loader counts the handle's uses itself, so there is no reference to take here.
    if (handle) {
        moduleHandle = handle;
        try {
            readOwnPath();
        } catch (...) {
            gPath[0] = 0;
        }
    }
    return InitModule();
}

bool ModuleExit()
{
    return DeinitModule();
}
