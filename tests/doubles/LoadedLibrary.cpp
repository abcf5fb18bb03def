#include "tests/doubles/LoadedLibrary.h"

#include <dlfcn.h>

namespace doubles {
namespace {

/** In the loaded file; see library/Entries.cpp. */
using Renew = ScriptedLibrary* (*)(Trace*);

ScriptedLibrary* renew(void* file, Trace* trace)
{
    const auto entry = reinterpret_cast<Renew>(dlsym(file, "renewScriptedLibrary"));
    return entry ? entry(trace) : nullptr;
}

} // namespace

LoadedLibrary::LoadedLibrary(Trace& trace, const std::string& filePath)
: path(filePath)
, file(dlopen(filePath.c_str(), RTLD_LAZY))
, library(file ? renew(file, &trace) : nullptr)
{
}

LoadedLibrary::~LoadedLibrary()
{
    if (!file)
        return;
    if (library)
        renew(file, nullptr);
    dlclose(file);
}

bool LoadedLibrary::closeAndAskWhetherStillLoaded()
{
    if (library)
        renew(file, nullptr);
    library = nullptr;
    if (file)
        dlclose(file);
    file = nullptr;
    void* still = dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (still)
        dlclose(still);
    return still != nullptr;
}

} // namespace doubles
