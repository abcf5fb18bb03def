#include "tests/bench/LeanLibrary.h"

#include "editorlib/EntryPoints.h"
#include "tests/doubles/Parameters.h"

#include <dlfcn.h>

namespace bench {

LeanLibrary* LeanLibrary::current = nullptr;

LeanLibrary::LeanLibrary(int32 highest)
: observers(doubles::kParameters)
, highestValue(highest)
{
    for (size_t value = 0; value < texts.size(); ++value)
        texts[value] = std::to_string(value);
    current = this;
}

Steinberg::Vst::VstIEditorConnect& opaque(LeanLibrary& library)
{
    return library;
}

void* libraryHandle()
{
    static void* program = dlopen(nullptr, RTLD_LAZY);
    return program;
}

} // namespace bench

extern "C" {

__attribute__((visibility("default"))) void
getVSTObserverObject(Steinberg::Vst::VstIObserver** out, void*, int, int, int, int,
                     Steinberg::Vst::ValueChangedCallback,
                     Steinberg::Vst::VstIObserver::ParamModeType, Steinberg::Vst::EditCallback,
                     Steinberg::Vst::EditCallback)
{
    *out = bench::LeanLibrary::current->nextObserver();
}

} // extern "C"
