// An editor library that calls a function that does not exist, as if another library were missing.
#include "editorlib/EntryPoints.h"

extern "C" void aFunctionThatIsNowhere();

extern "C" __attribute__((visibility("default"))) void
getVSTEditorConnectObject(Steinberg::Vst::VstIEditorConnect** /*out*/)
{
    aFunctionThatIsNowhere();
}

extern "C" __attribute__((visibility("default"))) void getVSTObserverObject() {}
