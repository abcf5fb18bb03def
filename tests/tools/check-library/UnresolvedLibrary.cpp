// An editor library that calls a function which nobody has, as one does whose neighbour is missing.
#include "editorlib/EntryPoints.h"

extern "C" void aFunctionThatIsNowhere();

extern "C" __attribute__((visibility("default"))) void
getVSTEditorConnectObject(Steinberg::Vst::VstIEditorConnect** /*out*/)
{
    aFunctionThatIsNowhere();
}

extern "C" __attribute__((visibility("default"))) void getVSTObserverObject() {}
