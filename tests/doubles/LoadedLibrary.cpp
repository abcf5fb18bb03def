#include "tests/doubles/LoadedLibrary.h"

#include <cstring>

namespace doubles {
namespace {

using Steinberg::Vst::tools::LibraryHandle;

/** In the loaded file; see library/Entries.cpp. */
using Renew = ScriptedLibrary* (*)(Trace*);

ScriptedLibrary* renew(const LibraryHandle& file, Trace* trace)
{
    const auto entry = file.find<Renew>("renewScriptedLibrary");
    return entry ? entry(trace) : nullptr;
}

} // namespace

const char* const LoadedLibrary::kPath = strdup(Steinberg::Vst::editorLibraryPath().c_str());

LoadedLibrary::LoadedLibrary(Trace& trace, const std::string& filePath)
: path(filePath)
, file(filePath)
, library(renew(file, &trace))
{
}

LoadedLibrary::~LoadedLibrary()
{
    if (library)
        renew(file, nullptr);
}

bool LoadedLibrary::closeAndAskWhetherStillLoaded()
{
    if (library)
        renew(file, nullptr);
    library = nullptr;
    file.close();
    return LibraryHandle::isLoaded(path);
}

void LoadedLibrary::closeAll()
{
    while (const LibraryHandle opened{kPath, RTLD_LAZY | RTLD_NOLOAD})
        dlclose(opened.get()); // for whoever left it open; its own opening ends by itself
}

} // namespace doubles
