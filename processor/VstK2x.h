// VstK2x: the processor component. Carries notes and automation from the host to the editor library
// and MIDI from the library to the host; the sound is made in hardware.
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

/** Life: created, initialised (buses exist), connected (the controller's message brought the editor
    connection), active (writeMidi accepted), processing, and back. Both components live in one
    process, since the message carries an address.

    One lock belongs to the outgoing MIDI queue, one guards the sample rate. The queue's is only
    tried, by the audio thread and by writers: no thread waits for another there. The editor
    connection, the Unicode flag and the active flag are written on the main thread and read without
    a lock. */
class VstK2x : public AudioEffect, public VstIEffectInterface {
public:
    VstK2x();
    ~VstK2x() override;
    VstK2x(const VstK2x&) = delete;
    VstK2x& operator=(const VstK2x&) = delete;

    /** For the factory: a new object through its IAudioProcessor face, with the caller's reference.
        @param context ignored
        Throws what construction throws. */
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
    /** Samples that the library's latency mode stands for; 0 without a library or in a host without
        Unicode. [host main thread, or where the host is told that the latency changed] */
    uint32 PLUGIN_API getLatencySamples() override;
    /** [host main thread] */
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    /** Always kResultOk. Buffers are neither read nor written. [audio thread] */
    tresult PLUGIN_API process(ProcessData& data) override;

    // VstIEffectInterface. [any library thread, and the audio thread from inside process; never
    // waits]
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
    std::atomic<bool> isSending{false}; ///< a block is at the queue: writers leave it the lock
    std::unique_ptr<Base::Thread::FLock> midiOutLock;
    std::unique_ptr<Base::Thread::FLock> sampleRateLock;
    // Lone words that need no lock; atomic only so that reading them while they are written is
    // defined.
    std::atomic<VstIEditorConnect*> editorConnection{nullptr}; ///< not owned
    std::atomic<bool> unicodeHost{false};
    std::atomic<bool> active{false};
    double sampleRate = 0; ///< Hz
    bool busesExist = false;
    const bool effectOption = false; ///< handed to setEffectOption
};

} // namespace Vst
} // namespace Steinberg
