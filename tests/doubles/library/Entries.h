// The entry points of the scripted library, as an editor library exports them.
#pragma once

#include "tests/doubles/ScriptedLibrary.h"

#define VSTK2X_TEST_EXPORT __attribute__((visibility("default")))

extern "C" {

VSTK2X_TEST_EXPORT void getVSTEditorConnectObject(Steinberg::Vst::VstIEditorConnect** out);

VSTK2X_TEST_EXPORT void getVSTObserverObject(Steinberg::Vst::VstIObserver** out, void* owner,
                                             int vstParamId, int a, int b, int c,
                                             void (*valueChanged)(void*, unsigned, int),
                                             Steinberg::Vst::VstIObserver::ParamModeType mode,
                                             void (*beginEdit)(void*, unsigned),
                                             void (*endEdit)(void*, unsigned));
}
