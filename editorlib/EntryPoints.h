// The two functions that the editor library exports with C linkage.
#pragma once

#include "editorlib/VstIObserver.h"

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Callbacks into the controller: context is the VstK2xController as void*, id a VST parameter ID.
    [any library thread] */
using ValueChangedCallback = void (*)(void* context, unsigned id, int value);
using EditCallback = void (*)(void* context, unsigned id);

/** getVSTEditorConnectObject: sets *out to the library's main object, or to null. The caller ends
    it with destroy. [host main thread, during initialize] */
using GetEditorConnect = void (*)(VstIEditorConnect** out);

/** getVSTObserverObject: sets *out to a new observer of one parameter, or to null. The caller ends
    it with destroy. [host main thread, during initialize]
    @param owner the callbacks' context
    @param vstParamId the parameter's VST ID
    @param a, b, c the editor's own address of the parameter: block, number, part */
using GetObserver = void (*)(VstIObserver** out, void* owner, int vstParamId, int a, int b, int c,
                             ValueChangedCallback valueChanged, VstIObserver::ParamModeType mode,
                             EditCallback beginEdit, EditCallback endEdit);

} // namespace Vst
} // namespace Steinberg
