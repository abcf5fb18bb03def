// MidiWire: the connection between the simulated library and its instrument.
#pragma once

#include "simulator/MidiMessage.h"
#include "simulator/SimulatorControl.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The library's end of a wire: gets what comes from the instrument. */
class MidiReceiver {
public:
    /** A message came from the instrument. [of a loop: the thread that sends; of a port: its
        own thread] */
    virtual void arrived(const MidiMessage& message) = 0;
    /** The instrument was away and is back, and has lost its values. [the port's own thread] */
    virtual void instrumentIsBack() = 0;

protected:
    ~MidiReceiver() = default;
};

/** Either a loop, which sends the library's notes back, or one of the system's MIDI ports. */
class MidiWire {
public:
    virtual ~MidiWire() = default;

    // Both return false when the message was dropped because the queue is full or the wire closed.
    /** Waits for nothing. [audio thread] */
    virtual bool sendFromAudioThread(const MidiMessage& message) = 0;
    /** [any other thread] */
    virtual bool send(const MidiMessage& message) = 0;

    /** Moves the instrument to another port. [any thread but the audio thread]
        @param which as in SIMULATOR_MIDI_PORT; empty for no port */
    virtual void choosePort(const std::string& which) = 0;
    /** The port's state. [any thread but the audio thread] */
    virtual SimulatorControl::MidiPort port() const = 0;

    /** Waits until the call of the receiver that is under way on the wire's own thread has
        returned. Does not wait on that thread itself. */
    virtual void waitForReceiver() = 0;
    /** Sends what waits and ends the notes that sound. After this the receiver is not called
        any more. */
    virtual void close() = 0;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
