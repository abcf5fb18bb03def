// VstK2xEditorView: the plug-in view that gives the editor library its place in the host's window.
#pragma once

#include "basics/HostThread.h"
#include "pluginterfaces/vst/ivstplugview.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Draws nothing itself: the library's view is attached below the host's. Passes on focus, keys,
    the wheel and the question which parameter lies at a position. The base keeps the rectangle and
    a reference to the controller; the view is not resizable. [host main thread]

    A view can outlive the controller's terminate, when the library is gone already: it then answers
    as one without a library. */
class VstK2xEditorView : public EditorView, public IParameterFinder {
public:
    /** @param controller may be null
        @param editor not owned, may be null; asked for the editor's size at once */
    VstK2xEditorView(EditController* controller, VstIEditorConnect* editor);
    ~VstK2xEditorView() override;
    VstK2xEditorView(const VstK2xEditorView&) = delete;
    VstK2xEditorView& operator=(const VstK2xEditorView&) = delete;

    tresult PLUGIN_API queryInterface(const TUID iid, void** obj) override;
    REFCOUNT_METHODS(EditorView)

    /** kResultTrue for "NSView", kNotImplemented for any other type. */
    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override;

    /** kResultOk whatever the library answers: the view then stays empty. */
    tresult PLUGIN_API attached(void* parent, FIDString type) override;
    /** kResultFalse when the library could not close its editor. */
    tresult PLUGIN_API removed() override;

    // kResultOk when the editor used the event, else kResultFalse.
    tresult PLUGIN_API onWheel(float distance) override;
    tresult PLUGIN_API onKeyDown(char16 key, int16 keyCode, int16 modifiers) override;
    tresult PLUGIN_API onKeyUp(char16 key, int16 keyCode, int16 modifiers) override;

    /** Always kResultOk. */
    tresult PLUGIN_API onFocus(TBool state) override;

    /** IParameterFinder: the parameter at a position of the view. */
    tresult PLUGIN_API findParameter(int32 xPos, int32 yPos, ParamID& resultTag) override;

private:
    VstIEditorConnect* editor() const;
    VstIEditorConnect* controllersEditor() const;
    bool isScrollInCubaseFamilyHost() const;

    HostThread hostThread;
    VstIEditorConnect* const editorConnection;
    const bool isControllersEditor; ///< at construction
};

} // namespace Vst
} // namespace Steinberg
