// SimulatedUser: one simulated instrument as tools and tests see it.
#pragma once

#include "simulator/SimulatedLibrary.h"
#include "simulator/SimulatorControl.h"

#include <memory>

namespace Steinberg {
namespace Vst {
namespace simulator {

class SimulatedUser final : public SimulatorControl {
public:
    /** @param editor the same instrument's object for the plug-in; must outlive this object */
    SimulatedUser(std::shared_ptr<Instrument> instrument, SimulatedLibrary& editor);

    bool turnKnob(uint32 id, int32 value) override;
    bool turnKnobThrough(uint32 id, const std::vector<int32>& values) override;
    bool choosePart(int32 part) override;
    bool chooseAudioPorts(const std::vector<std::string>& ids) override;
    bool chooseMidiPort(const std::string& id) override;
    bool storeBank(VoiceBank::Bank bank, int32 index) override;
    void chooseLatencyMode(int32 mode) override;
    void announceStartFile(bool pending) override;
    void chooseStateFormat(int32 format) override { editor.chooseStateFormat(format); }
    void chooseFirstStart(int32 state) override { editor.chooseFirstStart(state); }

    std::vector<VSTiAudioPort::AudioPortInfo> audioPorts() override;
    std::vector<VSTiMidiPort::MidiOutPortInfo> midiPorts() override;
    bool isConnectAudioPort() override;
    bool isConnectAudioPortHost() override;
    bool isHostReadyForSetPort() override;
    int32 shownPart() override { return instrument->shownPart; }
    bool edited() override { return parameterValue(InstrumentParameters::editFlag) != 0; }
    bool editorOpen() override { return editor.editorOpen(); }
    int32 parameterValue(uint32 id) override { return editor.getParameterValue(id); }
    std::vector<uint32> parameterIds() override;
    std::u16string stateText() override { return instrument->sound().toText(); }

    uint32 noteOnsReceived(int32 channel) override
    {
        return instrument->midi.hostNotes().noteOns(channel);
    }
    uint32 noteOffsReceived(int32 channel) override
    {
        return instrument->midi.hostNotes().noteOffs(channel);
    }
    uint32 otherMidiReceived() override { return instrument->midi.hostNotes().others(); }
    uint32 automationReceived() override { return instrument->automationCount; }
    std::vector<Applied> presetsApplied() override { return instrument->voicesApplied(); }
    std::vector<Applied> userBanksApplied() override { return instrument->userBanksApplied(); }
    uint32 channelsTold() override { return instrument->channelsTold; }
    int32 lastChannelTold() override { return instrument->lastChannelTold; }
    int32 hostType() override { return editor.hostType(); }
    std::vector<std::string> log() override { return instrument->log.texts(); }

    MidiPort midiPort() override { return instrument->midi.port(); }
    bool chooseProgram(int32 part, int32 program) override;

private:
    const std::shared_ptr<Instrument> instrument;
    SimulatedLibrary& editor;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
