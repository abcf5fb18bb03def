// The built library, loaded as the plug-in loads it, with one editor and doubles of both
// components.
#pragma once

#include "editorlib/VstIControllerInterface.h"
#include "editorlib/VstIEffectInterface.h"
#include "tests/simulator/LoadedSimulator.h"
#include "tests/simulator/ObserverTrace.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace doubles {

using Steinberg::int32;
using Steinberg::uint32;
using Steinberg::uint8;
using Steinberg::Vst::VoiceBank;

/** Writes every call into a trace and answers what the test sets. */
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

/** Keeps what was written, on whatever thread. */
class ListeningEffect : public Steinberg::Vst::VstIEffectInterface {
public:
    void writeMidi(const void* data, int length) override
    {
        if (count < written.size() && length == 3)
            std::copy_n(static_cast<const uint8*>(data), 3, written[count].begin());
        ++count;
    }

    std::array<std::array<uint8, 3>, 64> written{};
    size_t count = 0; ///< every call, kept or not
};

/** One editor of the built library; ended with the test unless the test ended it. */
class SimulatorTest : public testing::Test {
protected:
    static constexpr uint32 volume1 = 37012000;
    static constexpr uint32 pan1 = 37013000;
    static constexpr uint32 editFlag = 201005000;

    SimulatorTest()
    {
        library.connect(&editor);
        user = library.control(-1);
    }
    ~SimulatorTest() override
    {
        if (editor)
            editor->destroy();
    }

    VstIObserver* observe(uint32 id, void* owner)
    {
        VstIObserver* observer = nullptr;
        library.observe(&observer, owner, static_cast<int>(id), 0, 0, 0, traceValue,
                        VstIObserver::ParamModePart, traceBegin, traceEnd);
        return observer;
    }

    void watch(Trace& trace, const std::vector<uint32>& ids)
    {
        for (const uint32 id : ids) {
            observers.push_back(observe(id, &trace));
            ASSERT_EQ(0, editor->addObserver(observers.back()));
        }
    }
    void tick()
    {
        for (auto* observer : observers)
            observer->checkChange();
    }
    void stopWatching()
    {
        for (auto* observer : observers) {
            editor->removeObserver(observer);
            observer->destroy();
        }
        observers.clear();
    }

    LoadedSimulator library;
    VstIEditorConnect* editor = nullptr;
    SimulatorControl* user = nullptr;
    std::vector<VstIObserver*> observers;
};

} // namespace doubles
