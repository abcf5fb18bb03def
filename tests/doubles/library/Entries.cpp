// The scripted library as a real dynamic library: the two entry points of an editor library, and
// one that gives the test the ScriptedLibrary. Built complete, and once for each defect.
#include "tests/doubles/library/Entries.h"

using namespace Steinberg::Vst;

namespace {

doubles::Trace& ownTrace()
{
    static doubles::Trace trace;
    return trace;
}

std::unique_ptr<doubles::ScriptedLibrary>& library()
{
    static auto instance = std::make_unique<doubles::ScriptedLibrary>(ownTrace());
    return instance;
}

} // namespace

extern "C" {

/** Makes a new library, which records into the test's trace, or into its own for null. Objects of
    the one before are destroyed. */
VSTK2X_TEST_EXPORT doubles::ScriptedLibrary* renewScriptedLibrary(doubles::Trace* trace)
{
    library() = std::make_unique<doubles::ScriptedLibrary>(trace ? *trace : ownTrace());
    return library().get();
}

#if !defined(VSTK2X_WITHOUT_CONNECT)
void getVSTEditorConnectObject(VstIEditorConnect** out)
{
#if defined(VSTK2X_NULL_CONNECTION)
    library()->storesNullConnection = true;
#endif
    library()->connect(out);
}
#endif

#if !defined(VSTK2X_WITHOUT_OBSERVER)
void getVSTObserverObject(VstIObserver** out, void* owner, int vstParamId, int a, int b, int c,
                          void (*valueChanged)(void*, unsigned, int),
                          VstIObserver::ParamModeType mode, void (*beginEdit)(void*, unsigned),
                          void (*endEdit)(void*, unsigned))
{
    library()->makeObserver(out,
                            {owner, vstParamId, a, b, c, valueChanged, mode, beginEdit, endEdit});
}
#endif

} // extern "C"
