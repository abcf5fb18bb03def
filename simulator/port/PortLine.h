// PortLine: what the threads of a MIDI port share: its queues, its state and its counts.
#pragma once

#include "public.sdk/source/vst/utility/ringbuffer.h"
#include "simulator/MidiMessage.h"
#include "simulator/port/Wakeup.h"
#include "simulator/SimulatorControl.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Messages that leave wait in two queues, one of the audio thread's and one of all others;
    messages that arrive wait in a third. A queue that is full drops the newest message. */
class PortLine {
public:
    using State = SimulatorControl::MidiPort::State;

    /** Messages that each queue can hold. */
    static constexpr size_t capacity = 16384;
    /** A thread of the port looks around at least this often, woken or not. */
    static constexpr int lookMilliseconds = 250;

    /** @param which the first port to open, as SIMULATOR_MIDI_PORT names it */
    explicit PortLine(std::string which);

    // Both wake the sending thread and give false for a message that was dropped.
    /** Waits for nothing and allocates nothing. [audio thread] */
    bool queueFromAudioThread(const MidiMessage& message);
    /** [any other thread] */
    bool queue(const MidiMessage& message);

    /** Takes the next message to send. It counts as waiting until the sender takes it off the
        count. @return false when none waits. [sending thread] */
    bool take(MidiMessage& message);

    /** Queues a message from the instrument for the receiver. Waits for nothing. [one thread of
        the system's] */
    void arrive(const MidiMessage& message);

    /** Asks the sending thread to move to another port; empty for none. [any thread but the
        audio thread] */
    void choose(const std::string& which);
    /** @param[out] which the port to move to
        @return whether one was chosen since the last call. [sending thread] */
    bool takeChoice(std::string& which);

    /** @param reason why there is no port, for people; empty for an open one. [sending thread] */
    void setState(State state, const std::string& name, const std::string& reason);
    /** [any thread but the audio thread] */
    SimulatorControl::MidiPort status() const;

    /** The sending thread's last call. */
    void setEnded();
    /** @return false when the sending thread is still at work after that time */
    bool waitForEnd(std::chrono::seconds longest);

    OneReaderOneWriter::RingBuffer<MidiMessage> arrivals{capacity};
    Wakeup outgoing;
    Wakeup incoming;
    std::atomic<bool> ending{false};
    std::atomic<bool> isBack{false}; ///< the receiver is to be told that the instrument is back
    std::atomic<bool> hasLostNotes{false}; ///< a full queue dropped a note, so others may hang
    // Counts as in SimulatorControl::MidiPort.
    std::atomic<uint32> left{0};
    std::atomic<uint32> notesLeft{0};
    std::atomic<uint32> waiting{0};
    std::atomic<uint32> lost{0};
    std::atomic<uint32> arrived{0};

private:
    bool admit(bool hasRoom, const MidiMessage& message);

    OneReaderOneWriter::RingBuffer<MidiMessage> fromAudio{capacity};
    mutable std::mutex mutex; ///< guards everything below; the audio thread never takes it
    std::condition_variable end;
    std::deque<MidiMessage> fromOthers;
    std::string wanted;
    bool isChosen = true;
    bool hasEnded = false;
    State state = State::opening;
    std::string name;
    std::string reason;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
