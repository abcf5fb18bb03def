#include "simulator/SimulatedUser.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

SimulatedUser::SimulatedUser(std::shared_ptr<Instrument> newInstrument, SimulatedLibrary& newEditor)
: instrument(std::move(newInstrument))
, editor(newEditor)
{
}

bool SimulatedUser::turnKnob(uint32 id, int32 value)
{
    return instrument->turnKnob(id, {value});
}

bool SimulatedUser::turnKnobThrough(uint32 id, const std::vector<int32>& values)
{
    return instrument->turnKnob(id, values);
}

bool SimulatedUser::choosePart(int32 part)
{
    if (part < 0 || part >= InstrumentParameters::parts)
        return false;
    instrument->shownPart = part;
    return instrument->controller.tell([part](VstIControllerInterface& controller) {
        controller.editorPartSyncMidiCh(static_cast<unsigned>(part));
    });
}

bool SimulatedUser::chooseAudioPorts(const std::vector<std::string>& ids)
{
    std::array<const char*, 4> entries{};
    if (ids.size() != entries.size())
        return false;
    for (size_t index = 0; index < entries.size(); ++index)
        entries[index] = ids[index].c_str();
    return instrument->controller.tell(
        [&](VstIControllerInterface& controller) { controller.setAudioPortList(entries.data()); });
}

bool SimulatedUser::chooseMidiPort(const std::string& id)
{
    const auto ports = midiPorts();
    const auto chosen = std::find_if(ports.begin(), ports.end(),
                                     [&](const auto& port) { return port.portId == id; });
    instrument->midi.choosePort(chosen != ports.end() ? chosen->portName : "");
    return instrument->controller.tell(
        [&](VstIControllerInterface& controller) { controller.setMidiOutPort(id.c_str()); });
}

bool SimulatedUser::chooseProgram(int32 part, int32 program)
{
    if (part < 0 || part >= InstrumentParameters::parts || program < 0 || program > 127)
        return false;
    instrument->midi.sendProgram(part, program);
    return true;
}

bool SimulatedUser::storeBank(VoiceBank::Bank bank, int32 index)
{
    return instrument->controller.tell(
        [&](VstIControllerInterface& controller) { controller.storeUserBank(bank, index); });
}

void SimulatedUser::chooseLatencyMode(int32 mode)
{
    editor.chooseLatencyMode(mode);
    instrument->controller.tell(
        [](VstIControllerInterface& controller) { controller.changeLatencyTrigger(); });
}

void SimulatedUser::announceStartFile(bool pending)
{
    instrument->controller.tell([pending](VstIControllerInterface& controller) {
        controller.setInitialStartFileLoad(pending);
    });
}

std::vector<VSTiAudioPort::AudioPortInfo> SimulatedUser::audioPorts()
{
    using Ports = std::vector<VSTiAudioPort::AudioPortInfo>;
    return instrument->controller.ask(Ports{}, [](VstIControllerInterface& controller) {
        const auto* ports = controller.getAudioPortList();
        return ports ? *ports : Ports{};
    });
}

std::vector<VSTiMidiPort::MidiOutPortInfo> SimulatedUser::midiPorts()
{
    using Ports = std::vector<VSTiMidiPort::MidiOutPortInfo>;
    return instrument->controller.ask(Ports{}, [](VstIControllerInterface& controller) {
        const auto* ports = controller.getMidiOutPortList();
        return ports ? *ports : Ports{};
    });
}

bool SimulatedUser::isConnectAudioPort()
{
    return instrument->controller.ask(
        false, [](VstIControllerInterface& controller) { return controller.isConnectAudioPort(); });
}

bool SimulatedUser::isConnectAudioPortHost()
{
    return instrument->controller.ask(false, [](VstIControllerInterface& controller) {
        return controller.isConnectAudioPortHost();
    });
}

bool SimulatedUser::isHostReadyForSetPort()
{
    return instrument->controller.ask(false, [](VstIControllerInterface& controller) {
        return controller.isHostReadyForSetPort();
    });
}

std::vector<uint32> SimulatedUser::parameterIds()
{
    std::vector<uint32> ids;
    for (size_t index = 0; index < InstrumentParameters::size; ++index)
        ids.push_back(instrument->parameters.id(index));
    return ids;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
