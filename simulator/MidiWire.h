// MidiWire: what lies between the simulated library and the instrument that it drives.
#pragma once

#include "simulator/MidiMessage.h"
#include "simulator/SimulatorControl.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** The library's end of a wire. */
class MidiReceiver {
public:
    /** A message came from the instrument. [a loop: the sender's thread; a port: its own thread] */
    virtual void arrived(const MidiMessage& message) = 0;
    /** The instrument was away and is back, and knows nothing any more. [the port's own thread] */
    virtual void instrumentIsBack() = 0;

protected:
    ~MidiReceiver() = default;
};

/** One of two: a loop, which hands the library's own notes back, or a MIDI port of the system's. */
class MidiWire {
public:
    virtual ~MidiWire() = default;

    /** Both give false when the message was dropped, because too many wait. */
    virtual bool sendFromAudioThread(const MidiMessage& message) = 0; ///< waits for nothing
    virtual bool send(const MidiMessage& message) = 0;                ///< [any other thread]

    /** The instrument moves to another port, by the name that the environment variable takes; the
        empty one leaves it without. [any thread but the audio thread] */
    virtual void choosePort(const std::string& which) = 0;
    /** [any thread but the audio thread] */
    virtual SimulatorControl::MidiPort port() const = 0;

    /** Returns once the call of the receiver that is under way on the wire's own thread is over; at
        once on that thread. */
    virtual void waitForReceiver() = 0;
    /** The last messages leave, notes that sound are ended, and the receiver is not called any
     * more.
     */
    virtual void close() = 0;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
