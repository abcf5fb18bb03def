#include "tests/doubles/InProcessLibrary.h"

#include "tests/doubles/library/Entries.h"

#include <dlfcn.h>

namespace {

doubles::InProcessLibrary* current = nullptr;

} // namespace

namespace doubles {

InProcessLibrary::InProcessLibrary(Trace& trace)
: ScriptedLibrary(trace)
, program(dlopen(nullptr, RTLD_LAZY))
{
    current = this;
}

InProcessLibrary::~InProcessLibrary()
{
    current = nullptr;
    dlclose(program);
}

} // namespace doubles

using namespace Steinberg::Vst;

extern "C" {

void getVSTEditorConnectObject(VstIEditorConnect** out)
{
    if (current)
        current->connect(out);
}

void getVSTObserverObject(VstIObserver** out, void* owner, int vstParamId, int a, int b, int c,
                          void (*valueChanged)(void*, unsigned, int),
                          VstIObserver::ParamModeType mode, void (*beginEdit)(void*, unsigned),
                          void (*endEdit)(void*, unsigned))
{
    if (current)
        current->makeObserver(out,
                              {owner, vstParamId, a, b, c, valueChanged, mode, beginEdit, endEdit});
}

} // extern "C"
