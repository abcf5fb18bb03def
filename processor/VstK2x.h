// VstK2x: the processor component. It sends notes and automation from the host to the editor
// library and MIDI from the library to the host. It makes no sound: the hardware does.
#pragma once

#include "basics/HostThread.h"
#include "editorlib/VstIEffectInterface.h"
#include "processor/MidiOutQueue.h"
#include "public.sdk/source/vst/vstaudioeffect.h"

#include "base/thread/include/flock.h"
#include "pluginterfaces/vst/ivstevents.h"

#include <atomic>
#include <memory>

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Its states: created, initialized (the buses exist), connected (the controller's message has
    brought the editor connection), active (writeMidi accepts messages), processing, and back. The
    controller is in the same process, since the message carries an address.

    One lock belongs to the queue of outgoing MIDI, another guards the sample rate. The queue's lock
    is only tried, never waited for. The editor connection, the Unicode flag and the active flag are
    written on the main thread and read without a lock. */
class VstK2x : public AudioEffect, public VstIEffectInterface {
public:
    VstK2x();
    ~VstK2x() override;
    VstK2x(const VstK2x&) = delete;
    VstK2x& operator=(const VstK2x&) = delete;

    /** For the factory: makes an object and gives its IAudioProcessor, a new reference.
        @param context ignored
        Throws what the constructor throws. */
    static FUnknown* createInstance(void* context);

    // IPluginBase. [host main thread]
    tresult PLUGIN_API initialize(FUnknown* context) override;
    tresult PLUGIN_API terminate() override;

    /** IConnectionPoint: the controller's messages. Always kResultOk. [host main thread] */
    tresult PLUGIN_API notify(IMessage* message) override;

    // IComponent.
    /** [host main thread; Ardour calls it on another] */
    tresult PLUGIN_API setActive(TBool state) override;
    // [host main thread]
    tresult PLUGIN_API setState(IBStream* state) override;
    tresult PLUGIN_API getState(IBStream* state) override;

    // IAudioProcessor.
    /** The latency of the library's latency mode, in samples; 0 without a library, or in
        a host without Unicode. [host main thread, or the thread on which the library
        calls changeLatencyTrigger] */
    uint32 PLUGIN_API getLatencySamples() override;
    /** [host main thread] */
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    /** Always kResultOk. Buffers are neither read nor written. [audio thread] */
    tresult PLUGIN_API process(ProcessData& data) override;

    // VstIEffectInterface. [any library thread, and the audio thread from inside process;
    // never waits]
    void writeMidi(const void* data, int length) override;

private:
    void addBuses();
    void connectEditor(IMessage& message);
    void disconnectEditor();
    void readUnicodeFlag(IMessage& message);
    void sendQueuedEvents(IEventList& events);
    bool takeQueued(MidiBytes& midi);

    HostThread hostThread;
    MidiOutQueue midiOutQueue;
    std::atomic<bool> isSending{false}; ///< a block is sending, so writers do not try the lock
    std::unique_ptr<Base::Thread::FLock> midiOutLock;
    std::unique_ptr<Base::Thread::FLock> sampleRateLock;
    // Written on the main thread while other threads read them.
    std::atomic<VstIEditorConnect*> editorConnection{nullptr}; ///< not owned
    std::atomic<bool> unicodeHost{false};
    std::atomic<bool> active{false};
    double sampleRate = 0; ///< Hz
    bool busesExist = false;
    const bool effectOption = false; ///< given to the library by setEffectOption
};

} // namespace Vst
} // namespace Steinberg
