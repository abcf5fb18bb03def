// Listeners: a controller and a processor for the simulated library to call.
#pragma once

#include "editorlib/VstIControllerInterface.h"
#include "editorlib/VstIEffectInterface.h"
#include "pluginterfaces/base/ftypes.h"
#include "tests/doubles/Trace.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace doubles {

using Steinberg::int32;
using Steinberg::uint32;
using Steinberg::uint8;
using Steinberg::Vst::VoiceBank;

/** A controller that writes each call into a trace and returns what the test sets. */
class ListeningController : public Steinberg::Vst::VstIControllerInterface {
public:
    using AudioPorts = std::vector<Steinberg::Vst::VSTiAudioPort::AudioPortInfo>;
    using MidiPorts = std::vector<Steinberg::Vst::VSTiMidiPort::MidiOutPortInfo>;

    AudioPorts* getAudioPortList() override { return audioPorts; }
    void setAudioPortList(const char** ids) override
    {
        std::string text = "setAudioPortList(";
        for (int index = 0; index < 4; ++index)
            text += (index > 0 ? std::string(", ") : std::string()) + ids[index];
        trace.add(text + ")");
    }
    MidiPorts* getMidiOutPortList() override { return midiPorts; }
    void setMidiOutPort(const char* id) override
    {
        trace.add(std::string("setMidiOutPort(") + id + ")");
    }
    void editorPartSyncMidiCh(unsigned channel) override
    {
        trace.add("editorPartSyncMidiCh(" + std::to_string(channel) + ")");
    }
    void storeUserBank(VoiceBank::Bank bank, int index) override
    {
        trace.add("storeUserBank(" + std::to_string(bank) + ", " + std::to_string(index) + ")");
    }
    void setVSTManageParameter(unsigned id, int value) override { managed[id] = value; }
    void setInitialStartFileLoad(bool state) override
    {
        trace.add(std::string("setInitialStartFileLoad(") + (state ? "true)" : "false)"));
    }
    bool isConnectAudioPort() override { return answer; }
    bool isSetVSTValue(unsigned id, double value, int& out) override
    {
        out = 0;
        return !setValue || setValue(id, value, out);
    }
    void changeLatencyTrigger() override { trace.add("changeLatencyTrigger()"); }
    bool isConnectAudioPortHost() override { return answer; }
    bool isHostReadyForSetPort() override { return answer; }

    Trace trace;
    std::map<unsigned, int> managed;
    AudioPorts* audioPorts = nullptr;
    MidiPorts* midiPorts = nullptr;
    bool answer = false;
    std::function<bool(unsigned, double, int&)> setValue;
};

/** A processor that keeps the messages that it gets. */
class ListeningEffect : public Steinberg::Vst::VstIEffectInterface {
public:
    void writeMidi(const void* data, int length) override
    {
        if (count < written.size() && length == 3)
            std::copy_n(static_cast<const uint8*>(data), 3, written[count].begin());
        ++count;
    }

    std::array<std::array<uint8, 3>, 64> written{};
    size_t count = 0; ///< of all calls; at most 64 messages are kept
};

} // namespace doubles
