// The scripted library as a real dynamic library: the two entry points of an editor library, and
// one by which a test reaches the ScriptedLibrary behind them. Built once complete and once for
// each way in which a library can be wrong.
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

/** A fresh library that records into the test's trace, or into its own for null. What the one
    before handed out is dead. */
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
