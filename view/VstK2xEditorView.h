// VstK2xEditorView: the plug-in view in which the editor library shows its editor.
#pragma once

#include "basics/HostThread.h"
#include "pluginterfaces/vst/ivstplugview.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

namespace Steinberg {
namespace Vst {

class EditorOwner;
class VstIEditorConnect;

/** Draws nothing: the library puts its own view into the host's. Passes focus, keys, the wheel and
    the host's question which parameter is at a position on to the library. The base class keeps the
    rectangle and a reference to the controller; the view is not resizable. [host main thread]

    When a host keeps a view beyond the controller's terminate, which ends the library, the view
    does nothing any more. */
class VstK2xEditorView : public EditorView, public IParameterFinder {
public:
    /** Asks the library for the editor's size.
        @param controller may be null; one that is an EditorOwner is asked for the host and whether
        its library is still bound
        @param editor the library, borrowed, may be null: the view is then empty */
    VstK2xEditorView(EditController* controller, VstIEditorConnect* editor);
    ~VstK2xEditorView() override;
    VstK2xEditorView(const VstK2xEditorView&) = delete;
    VstK2xEditorView& operator=(const VstK2xEditorView&) = delete;

    tresult PLUGIN_API queryInterface(const TUID iid, void** obj) override;
    REFCOUNT_METHODS(EditorView)

    /** kResultTrue for "NSView", kNotImplemented for any other type. */
    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override;

    /** Always kResultOk. When the library cannot open its editor, the view stays empty. */
    tresult PLUGIN_API attached(void* parent, FIDString type) override;
    /** kResultFalse when the library could not close its editor. */
    tresult PLUGIN_API removed() override;

    // Events: kResultOk when the editor used the event, else kResultFalse.
    tresult PLUGIN_API onWheel(float distance) override;
    tresult PLUGIN_API onKeyDown(char16 key, int16 keyCode, int16 modifiers) override;
    tresult PLUGIN_API onKeyUp(char16 key, int16 keyCode, int16 modifiers) override;

    /** Always kResultOk. */
    tresult PLUGIN_API onFocus(TBool state) override;

    /** IParameterFinder: the parameter at a position of the view. kResultFalse when there is none,
        and without a library or a controller. */
    tresult PLUGIN_API findParameter(int32 xPos, int32 yPos, ParamID& resultTag) override;

private:
    VstIEditorConnect* editor() const;
    bool isScrollInCubaseFamilyHost() const;

    HostThread hostThread;
    const EditorOwner* const owner; ///< the base class holds its reference; null for another class
    VstIEditorConnect* const editorConnection;
    const bool isOwnersEditor; ///< the connection was the owner's when the view was made
};

} // namespace Vst
} // namespace Steinberg
