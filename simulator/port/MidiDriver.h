// MidiDriver: access to one of the system's MIDI ports.
#pragma once

#include "simulator/MidiMessage.h"

#include <functional>
#include <stdexcept>
#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Thrown when a port cannot be opened. what() tells why, as a part of a sentence: "there is none
    called X". */
class NoMidiPort : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/** Every call may wait for the system. [one thread, but where noted] */
class MidiDriver {
public:
    enum class State {
        there,
        away, ///< the other end is gone, and messages are lost; it may come back
        gone  ///< the system's MIDI service itself is gone
    };

    /** Called for each message that arrives and is understood, on a thread of the system that may
        be a real-time thread: it must not wait. */
    using Arrival = std::function<void(const MidiMessage& message)>;

    virtual ~MidiDriver() = default;

    /** Opens a port; none may be open.
        @param which as in SIMULATOR_MIDI_PORT
        @return the port's name
        @throws NoMidiPort */
    virtual std::string open(const std::string& which, Arrival arrival) = 0;
    /** @return false when the port did not take the message; look then tells why */
    virtual bool send(const MidiMessage& message) = 0;
    /** Tells whether the other end is still there, and connects to it again when it is back. */
    virtual State look() = 0;
    /** Closes the port, after all that was sent has left. */
    virtual void close() = 0;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
