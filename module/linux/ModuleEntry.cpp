// The entry points that a Linux host calls after loading and before unloading the module.
#include "basics/CallGuard.h"
#include "module/ModuleInit.h"
#include "pluginterfaces/base/fplatform.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <string_view>
#include <unistd.h>

extern "C" {

/** @param handle the host's handle of this shared library; may be null. Hosts may call this several
    times, each with its own ModuleExit. [host main thread] */
SMTG_EXPORT_SYMBOL bool ModuleEntry(void* handle);
SMTG_EXPORT_SYMBOL bool ModuleExit();
}

namespace {

void removeLast(std::string& path)
{
    path.erase(std::min(path.rfind('/'), path.size()));
}

/** The file's path from the root, with "." and ".." taken out as they are written, so that symbolic
    links stay in it; empty when the current folder is not known. With the C++ library's own path,
    whose first use is slow, finding the bundle would be nine tenths of the entry. */
std::string absolutePath(std::string_view file)
{
    std::string path;
    if (file.substr(0, 1) != "/") {
        char folder[PATH_MAX];
        if (!getcwd(folder, sizeof(folder)))
            return {};
        if (folder[1]) // the root's slash comes with the first name
            path = folder;
    }
    while (!file.empty()) {
        const std::string_view name = file.substr(0, file.find('/'));
        file.remove_prefix(std::min(name.size() + 1, file.size()));
        if (name == "..")
            removeLast(path);
        else if (!name.empty() && name != ".")
            path.append("/").append(name);
    }
    return path;
}

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
    if (dladdr(reinterpret_cast<void*>(&ModuleEntry), &info) == 0 || !info.dli_fname ||
        !*info.dli_fname)
        return;
    // The loader's name of the file is as the host gave it, which may be from the host's folder.
    const std::string bundle = bundleOf(absolutePath(info.dli_fname));
    if (bundle.size() < kMaxModulePath)
        std::memcpy(gPath, bundle.c_str(), bundle.size() + 1);
}

} // namespace

bool ModuleEntry(void* handle)
{
    // The loader counts the handle's uses itself, so there is no reference to take here.
    if (handle) {
        moduleHandle = handle;
        gPath[0] = 0;
        Steinberg::Vst::guarded([] { readOwnPath(); });
    }
    return InitModule();
}

bool ModuleExit()
{
    return DeinitModule();
}
