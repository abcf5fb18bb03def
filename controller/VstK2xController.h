// VstK2xController: the edit controller. It binds the editor library, and starts and ends
// everything between library and host in the right order.
#pragma once

#include "basics/HostThread.h"
#include "controller/HostAndLibrary.h"
#include "controller/ParameterModel.h"
#include "controller/ParameterTable.h"
#include "controller/PortManager.h"
#include "controller/TrackRouting.h"
#include "controller/UnitList.h"
#include "controller/VstTimer.h"
#include "editorlib/IExternalPlugin.h"
#include "editorlib/VstIControllerInterface.h"
#include "hostapi/IExternalEffectUsingSKI.h"
#include "view/EditorOwner.h"

#include "pluginterfaces/vst/ivstunits.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

namespace Steinberg {

class IDevice;
class IHostClasses;
class IValue;

namespace Vst {

/** Host and library see this one class. The work is done by its members: EditorLibrary binds the
    library, ParameterModel mirrors the parameters, PortManager handles the host's ports,
    TrackRouting follows the host's tracks. This class forwards to them, and has the order of the
    steps of initialize, connect, disconnect and terminate.

    The host calls on its main thread, where nothing else is said; for what the library calls see
    VstIControllerInterface. No operation throws, except createInstance and the three for edits. */
class VstK2xController : public EditController,
                         public UnitList,
                         public IExternalEffectUsingSKI,
                         public VstIControllerInterface,
                         public IExternalPlugin,
                         public EditorOwner {
public:
    using GuiEvent = ParameterModel::GuiEvent;
    static constexpr GuiEvent GuiEventBeginEdit = ParameterModel::GuiEventBeginEdit;
    static constexpr GuiEvent GuiEventEndEdit = ParameterModel::GuiEventEndEdit;
    static constexpr GuiEvent GuiEventValueChange = ParameterModel::GuiEventValueChange;

    VstK2xController();
    ~VstK2xController() override;
    VstK2xController(const VstK2xController&) = delete;
    VstK2xController& operator=(const VstK2xController&) = delete;

    /** For the factory: makes an object and gives its IEditController, a new reference.
        @param context ignored
        Throws what the constructor throws. */
    static FUnknown* createInstance(void* context);

    // FUnknown. Gives neither IExternalPlugin nor VstIControllerInterface: service and library get
    // these as pointers.
    tresult PLUGIN_API queryInterface(const TUID iid, void** obj) override;
    REFCOUNT_METHODS(EditController)

    /** IDependent: something in the host's mixer changed. [the thread of the host's
        update handler] */
    void PLUGIN_API update(FUnknown* changedUnknown, int32 message) override;

    // IPluginBase.
    /** kResultFalse when there is no editor library. The plug-in then does nothing, and a further
        initialize fails again, until terminate. */
    tresult PLUGIN_API initialize(FUnknown* context) override;
    tresult PLUGIN_API terminate() override;

    // IConnectionPoint: tells the processor of the editor library, and that it ends.
    tresult PLUGIN_API connect(IConnectionPoint* other) override;
    tresult PLUGIN_API disconnect(IConnectionPoint* other) override;

    // IEditController. The project's state is in the processor; setState takes presets and user
    // banks only. All three return kResultOk.
    tresult PLUGIN_API setComponentState(IBStream* state) override;
    tresult PLUGIN_API setState(IBStream* state) override;
    tresult PLUGIN_API getState(IBStream* state) override;
    IPlugView* PLUGIN_API createView(FIDString name) override;
    /** Keeps the handler even if it throws when it is queried for its extensions. */
    tresult PLUGIN_API setComponentHandler(IComponentHandler* handler) override;

    // The parameters as the host sees them: the base class's results. [any thread, since a host may
    // ask when it is told of an edit, which happens on the library's thread]
    int32 PLUGIN_API getParameterCount() override;
    tresult PLUGIN_API getParameterInfo(int32 index, ParameterInfo& info) override;
    tresult PLUGIN_API getParamStringByValue(ParamID id, ParamValue normalized,
                                             String128 string) override;
    tresult PLUGIN_API getParamValueByString(ParamID id, TChar* string,
                                             ParamValue& normalized) override;
    ParamValue PLUGIN_API normalizedParamToPlain(ParamID id, ParamValue normalized) override;
    ParamValue PLUGIN_API plainParamToNormalized(ParamID id, ParamValue plain) override;
    ParamValue PLUGIN_API getParamNormalized(ParamID id) override;
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;

    // EditController: send an edit to the host. kResultFalse without a component handler. Throws
    // what the host throws. [any thread]
    tresult beginEdit(ParamID id) override;
    tresult performEdit(ParamID id, ParamValue normalized) override;
    tresult endEdit(ParamID id) override;

    // IExternalEffectUsingSKI.
    int32 PLUGIN_API hostReadyForSetPortConnections() override;
    tresult PLUGIN_API getReturnGain(float& gain) override;

    // VstIControllerInterface.
    std::vector<VSTiAudioPort::AudioPortInfo>* getAudioPortList() override
    {
        return ports.getAudioPortList();
    }
    void setAudioPortList(const char** ids) override
    {
        guarded([&] { ports.setAudioPortList(ids); });
    }
    std::vector<VSTiMidiPort::MidiOutPortInfo>* getMidiOutPortList() override
    {
        return ports.getMidiOutPortList();
    }
    void setMidiOutPort(const char* id) override
    {
        guarded([&] { ports.setMidiOutPort(id); });
    }
    void editorPartSyncMidiCh(unsigned int channel) override
    {
        guarded([&] { routing.editorPartSyncMidiCh(channel); });
    }
    void storeUserBank(VoiceBank::Bank bank, int index) override;
    void setVSTManageParameter(unsigned int id, int value) override
    {
        guarded([&] { parameterModel.setVSTManageParameter(id, value); });
    }
    void setInitialStartFileLoad(bool state) override { ports.setInitialStartFileLoad(state); }
    bool isConnectAudioPort() override { return ports.isConnectAudioPort(); }
    bool isSetVSTValue(unsigned int id, double value, int& out) override
    {
        return guarded(false, [&] { return parameterModel.isSetVSTValue(id, value, out); });
    }
    void changeLatencyTrigger() override;
    bool isConnectAudioPortHost() override
    {
        return guarded(true, [this] { return ports.isConnectAudioPortHost(); });
    }
    bool isHostReadyForSetPort() override { return ports.isHostReadyForSetPort(); }

    // IExternalPlugin.
    tresult PLUGIN_API setPluginInfo(VstIEditorConnect* connect, void* libraryHandle) override;

    // The kind of host (see EditorOwner) and the library. [any thread]
    int getVSTHostType() const override { return outside.getHostKind(); }
    bool isUnicodeAppHost() const { return outside.isUnicodeHost(); }
    VstIEditorConnect* getEditorConnection() const override
    {
        return outside.library.getConnection();
    }

    // Parameters: see ParameterModel.
    unsigned createObserverParameter(int block, int number, int part, ValueChangedCallback callback,
                                     VstIObserver::ParamModeType mode)
    {
        return parameterModel.createObserverParameter(block, number, part, callback, mode);
    }
    static unsigned getVSTParamID(int block, int number, int part, VstIObserver::ParamModeType mode)
    {
        return vstParameterID(block, number, part, mode);
    }
    void createVSTPartParameter(int unitId, int part, VstIObserver::ParamModeType mode)
    {
        parameterModel.createVSTPartParameter(unitId, part, mode);
    }
    void createVSTNotAutomationParameter() { parameterModel.createVSTNotAutomationParameter(); }
    /** Creates nothing: the instrument has no common parameters for the host. */
    void createVSTMultiCommonParameter() {}
    /** Borrowed; null for an unknown ID. */
    Parameter* getParameter(unsigned id) const { return parameterModel.getParameter(id); }
    void setEditorParameter(unsigned id, int value)
    {
        guarded([&] { parameterModel.setEditorParameter(id, value); });
    }
    void setEditFlagParameter(unsigned id, int value)
    {
        guarded([&] { parameterModel.setEditFlagParameter(id, value); });
    }
    void setParameterToVST(const EditorParameter* parameter, unsigned id, int value)
    {
        guarded([&] { parameterModel.setParameterToVST(parameter, id, value); });
    }
    void editorBeginEdit(unsigned id) { notificationGuiEvent(GuiEventBeginEdit, id, 0); }
    void editorEndEdit(unsigned id) { notificationGuiEvent(GuiEventEndEdit, id, 0); }
    void notificationGuiEvent(GuiEvent kind, unsigned id, double value)
    {
        guarded([&] { parameterModel.notificationGuiEvent(kind, id, value); });
    }
    void notificationEvent()
    {
        guarded([this] { parameterModel.notificationEvent(); });
    }

    // Ports and routing: see PortManager and TrackRouting.
    int32 allMidiInputRemove(const std::string& text)
    {
        return guarded<int32>(1, [&] { return ports.allMidiInputRemove(text); });
    }
    void firstStartAudioportDisplayCompulsorily()
    {
        guarded([this] { ports.firstStartAudioportDisplayCompulsorily(); });
    }
    static bool isExistAudioPortIdList(std::string id, const std::vector<std::string>& list)
    {
        return PortManager::isExistAudioPortIdList(std::move(id), list);
    }
    void midiChSyncEditorPart() const
    {
        guarded([this] { routing.midiChSyncEditorPart(); });
    }
    bool CheckMIDIOutputRouting(IValue* output, IDevice* track)
    {
        return guarded(false, [&] { return routing.CheckMIDIOutputRouting(output, track); });
    }
    IDevice* getSelectedTrackDevice() const
    {
        return guarded<IDevice*>(nullptr, [this] { return routing.getSelectedTrackDevice(); });
    }
    void AddDependent_MIDIOutput(IHostClasses* hostClasses, IDevice* track)
    {
        guarded([&] { routing.AddDependent_MIDIOutput(hostClasses, track); });
    }
    void AddDependent_MIDIChannel(IHostClasses* hostClasses, IDevice* track)
    {
        guarded([&] { routing.AddDependent_MIDIChannel(hostClasses, track); });
    }
    void RemoveDependent_MIDIOutput(IHostClasses* hostClasses)
    {
        guarded([&] { routing.RemoveDependent_MIDIOutput(hostClasses); });
    }
    void RemoveDependent_MIDIChannel(IHostClasses* hostClasses)
    {
        guarded([&] { routing.RemoveDependent_MIDIChannel(hostClasses); });
    }
    bool isSameIValueString(IValue* value, const std::string& text)
    {
        return guarded(false, [&] { return routing.isSameIValueString(value, text); });
    }

    OBJ_METHODS(VstK2xController, EditController) // untaken: sdk-macro

private:
    struct HostObjects;
    enum class Life { kEnded, kInitialized, kFailed };

    tresult initializeBound(FUnknown* context);
    void unbind(HostObjects& held) noexcept;
    tresult terminateBase();
    void startLibrary();
    void createParameters();
    tresult sendEditorConnection();
    void sendDisconnection();
    void refreshParameters();

    HostThread hostThread;
    HostAndLibrary outside;
    ParameterModel parameterModel{*this, parameters, outside};
    PortManager ports{outside};
    TrackRouting routing{outside, *this};
    VSTGUI::SharedPointer<VstTimer> guiTimer;
    Life life = Life::kEnded;
};

} // namespace Vst
} // namespace Steinberg
