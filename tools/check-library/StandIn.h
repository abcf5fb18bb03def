// StandIn: stands in the plug-in's place and watches what the library calls.
#pragma once

#include "editorlib/VstIEffectInterface.h"
#include "pluginterfaces/base/ftypes.h"
#include "tools/common/SilentController.h"

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** Marks the thread that it lives on as an audio thread. */
class AudioThreadMark {
public:
    AudioThreadMark();
    ~AudioThreadMark();
    AudioThreadMark(const AudioThreadMark&) = delete;
    AudioThreadMark& operator=(const AudioThreadMark&) = delete;
};

/** Keeps the parameters' editor values as the plug-in does and has no ports. One for each life of
    the library. [any thread] */
class StandIn final : public tools::SilentController, public VstIEffectInterface {
public:
    StandIn();
    ~StandIn();
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    /** A parameter that the library watches from now on. */
    void mirror(unsigned id, int32 minimum, int32 maximum, int32 value);
    /** Sets the value as the plug-in does when it has asked the library for it. */
    void refresh(unsigned id, int32 value);
    /** The value that the plug-in would have now, and the same from 0 to 1 as hosts have it. */
    int32 mirrored(unsigned id) const;
    double normalized(unsigned id) const;

    /** From now on the library must use neither of these, nor call the callbacks. */
    void takeBackController() { controllerIsAway = true; }
    void takeBackEffect() { effectIsAway = true; }
    void takeBackObservers() { observersAreAway = true; }

    size_t midiMessages() const { return messages; }
    /** Messages of other lengths than three bytes, which the plug-in drops. */
    size_t droppedMessages() const { return dropped; }
    size_t valuesChanged() const { return values; }
    /** Threads other than the one that made this object on which callbacks came. */
    size_t otherThreads() const;
    /** What the library did although the contract forbids it, each kind once, without its subject:
        "calls writeMidi after ...". */
    std::vector<std::string> faults() const;

    // The callbacks of an observer; context is a StandIn.
    static void valueChanged(void* context, unsigned id, int value);
    static void beginEdit(void* context, unsigned id);
    static void endEdit(void* context, unsigned id);

    std::vector<VSTiAudioPort::AudioPortInfo>* getAudioPortList() override;
    void setAudioPortList(const char** ids) override;
    std::vector<VSTiMidiPort::MidiOutPortInfo>* getMidiOutPortList() override;
    void setMidiOutPort(const char* id) override;
    void editorPartSyncMidiCh(unsigned int channel) override;
    void storeUserBank(VoiceBank::Bank bank, int index) override;
    void setVSTManageParameter(unsigned int id, int value) override;
    void setInitialStartFileLoad(bool state) override;
    bool isConnectAudioPort() override;
    bool isSetVSTValue(unsigned int id, double value, int& out) override;
    void changeLatencyTrigger() override;
    bool isConnectAudioPortHost() override;
    bool isHostReadyForSetPort() override;

    void writeMidi(const void* data, int length) override;

private:
    struct Parameter {
        int32 minimum;
        int32 maximum;
        int32 value;
        bool isBeingEdited = false;
    };
    enum class OnAudioThread { mayBe, mustNotBe };

    /** Judges a callback of a known parameter. Called under the mutex. */
    using Judge = std::function<void(StandIn& standIn, Parameter& parameter)>;
    /** Notes what is wrong with any callback, and has judge look at the rest. */
    static void callBack(void* context, unsigned id, const char* callback, const Judge& judge);
    static StandIn* find(void* context, const char* callback);
    void noteFault(const std::string& kind, const std::string& words);
    void noteUse(const char* operation, OnAudioThread where);
    void noteAudioThread(const char* operation);

    const std::thread::id ownThread = std::this_thread::get_id();
    mutable std::mutex mutex;
    std::map<unsigned, Parameter> parameters;
    std::set<std::thread::id> callbackThreads;
    std::map<std::string, std::string> faultsByKind;
    std::atomic<size_t> messages{0};
    std::atomic<size_t> dropped{0};
    std::atomic<size_t> values{0};
    std::atomic<bool> controllerIsAway{false};
    std::atomic<bool> effectIsAway{false};
    std::atomic<bool> observersAreAway{false};
};

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
