// SilentController: a controller for a library that no host is connected to.
#pragma once

#include "editorlib/VstIControllerInterface.h"

namespace Steinberg {
namespace Vst {
namespace tools {

/** Has no ports and no parameters, so that a library may call it as soon as it starts.
    [any thread] */
class SilentController : public VstIControllerInterface {
public:
    std::vector<VSTiAudioPort::AudioPortInfo>* getAudioPortList() override { return &audioPorts; }
    void setAudioPortList(const char**) override {}
    std::vector<VSTiMidiPort::MidiOutPortInfo>* getMidiOutPortList() override { return &midiPorts; }
    void setMidiOutPort(const char*) override {}
    void editorPartSyncMidiCh(unsigned int) override {}
    void storeUserBank(VoiceBank::Bank, int) override {}
    void setVSTManageParameter(unsigned int, int) override {}
    void setInitialStartFileLoad(bool) override {}
    bool isConnectAudioPort() override { return false; }
    bool isSetVSTValue(unsigned int, double, int&) override { return false; }
    void changeLatencyTrigger() override {}
    bool isConnectAudioPortHost() override { return false; }
    bool isHostReadyForSetPort() override { return false; }

private:
    std::vector<VSTiAudioPort::AudioPortInfo> audioPorts;
    std::vector<VSTiMidiPort::MidiOutPortInfo> midiPorts;
};

} // namespace tools
} // namespace Vst
} // namespace Steinberg
