// VstK2xController's operations that its collaborators carry out, and the library's callbacks.
#include "basics/CallGuard.h"
#include "controller/ParameterTable.h"
#include "controller/UnitList.h"
#include "controller/VstK2xController.h"
#include "editorlib/VstIEditorConnect.h"
#include "presets/VstK2xPresetCreater.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {

namespace {

/** The host mixes the returned audio with the square root of two. */
constexpr float kReturnGain = 1.41421354F;

constexpr size_t kString128Units = 128;

} // namespace

// Parameters ------------------------------------------------------------------

int32 PLUGIN_API VstK2xController::getParameterCount()
{
    return parameterModel.withParameters<int32>(
        0, [this] { return EditController::getParameterCount(); });
}

tresult PLUGIN_API VstK2xController::getParameterInfo(int32 index, ParameterInfo& info)
{
    return parameterModel.withParameters<tresult>(
        kResultFalse, [&] { return EditController::getParameterInfo(index, info); });
}

tresult PLUGIN_API VstK2xController::getParamStringByValue(ParamID id, ParamValue normalized,
                                                           String128 string)
{
    if (!string)
        return kResultFalse;
    return guarded<tresult>(kResultFalse, [&] {
        return parameterModel.withParameters<tresult>(kResultFalse, [&] {
            return EditController::getParamStringByValue(id, normalized, string);
        });
    });
}

tresult PLUGIN_API VstK2xController::getParamValueByString(ParamID id, TChar* string,
                                                           ParamValue& normalized)
{
    if (!string)
        return kResultFalse;
    // Hosts pass a String128, which is full without a terminator when the text is as long.
    TChar text[kString128Units + 1] = {};
    std::copy(string, std::find(string, string + kString128Units, TChar(0)), text);
    return guarded<tresult>(kResultFalse, [&] {
        return parameterModel.withParameters<tresult>(kResultFalse, [&] {
            return EditController::getParamValueByString(id, text, normalized);
        });
    });
}

ParamValue PLUGIN_API VstK2xController::normalizedParamToPlain(ParamID id, ParamValue normalized)
{
    return parameterModel.withParameters(
        normalized, [&] { return EditController::normalizedParamToPlain(id, normalized); });
}

ParamValue PLUGIN_API VstK2xController::plainParamToNormalized(ParamID id, ParamValue plain)
{
    return parameterModel.withParameters(
        plain, [&] { return EditController::plainParamToNormalized(id, plain); });
}

ParamValue PLUGIN_API VstK2xController::getParamNormalized(ParamID id)
{
    return parameterModel.withParameters<ParamValue>(
        0, [&] { return EditController::getParamNormalized(id); });
}

tresult PLUGIN_API VstK2xController::setParamNormalized(ParamID id, ParamValue value)
{
    return guarded<tresult>(kResultFalse, [&] {
        return parameterModel.withParameters<tresult>(
            kResultFalse, [&] { return EditController::setParamNormalized(id, value); });
    });
}

tresult VstK2xController::beginEdit(ParamID id)
{
    const auto handler = outside.componentHandler.get();
    return handler ? handler->beginEdit(id) : kResultFalse;
}

tresult VstK2xController::performEdit(ParamID id, ParamValue normalized)
{
    const auto handler = outside.componentHandler.get();
    return handler ? handler->performEdit(id, normalized) : kResultFalse;
}

tresult VstK2xController::endEdit(ParamID id)
{
    const auto handler = outside.componentHandler.get();
    return handler ? handler->endEdit(id) : kResultFalse;
}

unsigned VstK2xController::createObserverParameter(int block, int number, int part,
                                                   ValueChangedCallback callback,
                                                   VstIObserver::ParamModeType mode)
{
    return parameterModel.createObserverParameter(block, number, part, callback, mode);
}

unsigned VstK2xController::getVSTParamID(int block, int number, int part,
                                         VstIObserver::ParamModeType mode)
{
    return vstParameterID(block, number, part, mode);
}

void VstK2xController::createVSTPartParameter(int unitId, int part,
                                              VstIObserver::ParamModeType mode)
{
    parameterModel.createVSTPartParameter(unitId, part, mode);
}

void VstK2xController::createVSTNotAutomationParameter()
{
    parameterModel.createVSTNotAutomationParameter();
}

Parameter* VstK2xController::getParameter(unsigned id) const
{
    return parameterModel.getParameter(id);
}

void VstK2xController::setEditorParameter(unsigned id, int value)
{
    guarded([&] { parameterModel.setEditorParameter(id, value); });
}

void VstK2xController::setEditFlagParameter(unsigned id, int value)
{
    guarded([&] { parameterModel.setEditFlagParameter(id, value); });
}

void VstK2xController::setParameterToVST(const EditorParameter* parameter, unsigned id, int value)
{
    guarded([&] { parameterModel.setParameterToVST(parameter, id, value); });
}

void VstK2xController::editorBeginEdit(unsigned id)
{
    notificationGuiEvent(GuiEventBeginEdit, id, 0);
}

void VstK2xController::editorEndEdit(unsigned id)
{
    notificationGuiEvent(GuiEventEndEdit, id, 0);
}

void VstK2xController::notificationGuiEvent(GuiEvent kind, unsigned id, double value)
{
    guarded([&] { parameterModel.notificationGuiEvent(kind, id, value); });
}

void VstK2xController::notificationEvent()
{
    guarded([this] { parameterModel.notificationEvent(); });
}

void VstK2xController::setVSTManageParameter(unsigned int id, int value)
{
    guarded([&] { parameterModel.setVSTManageParameter(id, value); });
}

bool VstK2xController::isSetVSTValue(unsigned int id, double value, int& out)
{
    return guarded(false, [&] { return parameterModel.isSetVSTValue(id, value, out); });
}

void VstK2xController::changeLatencyTrigger()
{
    guarded([this] {
        if (const auto handler = outside.componentHandler.get())
            handler->restartComponent(kLatencyChanged);
    });
}

// Units: hosts get success and untouched outputs for the program lists that do not exist.
// ----------

int32 PLUGIN_API VstK2xController::getUnitCount()
{
    return kUnitCount;
}

tresult PLUGIN_API VstK2xController::getUnitInfo(int32 unitIndex, UnitInfo& info)
{
    describeUnit(unitIndex, info);
    return kResultOk;
}

int32 PLUGIN_API VstK2xController::getProgramListCount()
{
    return 0;
}

tresult PLUGIN_API VstK2xController::getProgramListInfo(int32, ProgramListInfo&)
{
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getProgramName(ProgramListID, int32, String128)
{
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getProgramInfo(ProgramListID, int32, CString, String128)
{
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::hasProgramPitchNames(ProgramListID, int32)
{
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getProgramPitchName(ProgramListID, int32, int16, String128)
{
    return kResultOk;
}

UnitID PLUGIN_API VstK2xController::getSelectedUnit()
{
    return kRootUnitId;
}

tresult PLUGIN_API VstK2xController::selectUnit(UnitID)
{
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getUnitByBus(MediaType, BusDirection, int32, int32, UnitID&)
{
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::setUnitProgramData(int32, int32, IBStream*)
{
    return kResultOk;
}

void VstK2xController::storeUserBank(VoiceBank::Bank bank, int index)
{
    guarded([&] {
        VstIEditorConnect* editor = getEditorConnection();
        if (!editor)
            return;
        VstK2xPresetCreater creater(*editor);
        creater.setVoiceDataInfo(bank, index, VstK2xPresetCreater::kAllUserBanks,
                                 VstK2xPresetCreater::kUserFolder);
    });
}

// Ports -----------------------------------------------------------------------

int32 PLUGIN_API VstK2xController::hostReadyForSetPortConnections()
{
    if (ports.hostReadyForSetPortConnections())
        guarded([this] { changeLatencyTrigger(); });
    return kResultOk;
}

tresult PLUGIN_API VstK2xController::getReturnGain(float& gain)
{
    gain = kReturnGain;
    return kResultOk;
}

std::vector<VSTiAudioPort::AudioPortInfo>* VstK2xController::getAudioPortList()
{
    return ports.getAudioPortList();
}

void VstK2xController::setAudioPortList(const char** ids)
{
    guarded([&] { ports.setAudioPortList(ids); });
}

std::vector<VSTiMidiPort::MidiOutPortInfo>* VstK2xController::getMidiOutPortList()
{
    return ports.getMidiOutPortList();
}

void VstK2xController::setMidiOutPort(const char* id)
{
    guarded([&] { ports.setMidiOutPort(id); });
}

void VstK2xController::setInitialStartFileLoad(bool state)
{
    ports.setInitialStartFileLoad(state);
}

bool VstK2xController::isConnectAudioPort()
{
    return ports.isConnectAudioPort();
}

bool VstK2xController::isConnectAudioPortHost()
{
    return guarded(true, [this] { return ports.isConnectAudioPortHost(); });
}

bool VstK2xController::isHostReadyForSetPort()
{
    return ports.isHostReadyForSetPort();
}

int32 VstK2xController::allMidiInputRemove(const std::string& text)
{
    return guarded<int32>(1, [&] { return ports.allMidiInputRemove(text); });
}

void VstK2xController::firstStartAudioportDisplayCompulsorily()
{
    guarded([this] { ports.firstStartAudioportDisplayCompulsorily(); });
}

bool VstK2xController::isExistAudioPortIdList(std::string id, const std::vector<std::string>& list)
{
    return PortManager::isExistAudioPortIdList(std::move(id), list);
}

// Routing ---------------------------------------------------------------------

void VstK2xController::editorPartSyncMidiCh(unsigned int channel)
{
    guarded([&] { routing.editorPartSyncMidiCh(channel); });
}

void VstK2xController::midiChSyncEditorPart() const
{
    guarded([this] { routing.midiChSyncEditorPart(); });
}

bool VstK2xController::CheckMIDIOutputRouting(IValue* output, IDevice* track)
{
    return guarded(false, [&] { return routing.CheckMIDIOutputRouting(output, track); });
}

IDevice* VstK2xController::getSelectedTrackDevice() const
{
    return guarded<IDevice*>(nullptr, [this] { return routing.getSelectedTrackDevice(); });
}

void VstK2xController::AddDependent_MIDIOutput(IHostClasses* hostClasses, IDevice* track)
{
    guarded([&] { routing.AddDependent_MIDIOutput(hostClasses, track); });
}

void VstK2xController::AddDependent_MIDIChannel(IHostClasses* hostClasses, IDevice* track)
{
    guarded([&] { routing.AddDependent_MIDIChannel(hostClasses, track); });
}

void VstK2xController::RemoveDependent_MIDIOutput(IHostClasses* hostClasses)
{
    guarded([&] { routing.RemoveDependent_MIDIOutput(hostClasses); });
}

void VstK2xController::RemoveDependent_MIDIChannel(IHostClasses* hostClasses)
{
    guarded([&] { routing.RemoveDependent_MIDIChannel(hostClasses); });
}

bool VstK2xController::isSameIValueString(IValue* value, const std::string& text)
{
    return guarded(false, [&] { return routing.isSameIValueString(value, text); });
}

} // namespace Vst
} // namespace Steinberg
