// MidiDriver: a MIDI port of the system's, as the port's own thread uses it.
#pragma once

#include "simulator/MidiMessage.h"

#include <functional>
#include <stdexcept>
#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Why a port cannot be opened: a part of a sentence, as in "there is no port called X". */
class NoMidiPort : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/** Every call may wait for the system. [one thread alone, but where noted] */
class MidiDriver {
public:
    enum class State {
        there,
        away, ///< the other end is gone, and what is sent goes nowhere; it may come back
        gone  ///< for good
    };

    /** Takes what arrives, on a thread of the system's that may be a real-time one: it waits for
        nothing. Messages that are not understood are left out. */
    using Arrival = std::function<void(const MidiMessage& message)>;

    virtual ~MidiDriver() = default;

    /** Opens a port. [with none open]
        @param which as SIMULATOR_MIDI_PORT names it @return the port's name
        @throws NoMidiPort */
    virtual std::string open(const std::string& which, Arrival arrival) = 0;
    /** @return false when the port did not take the message: see look */
    virtual bool send(const MidiMessage& message) = 0;
    /** Looks whether the other end is still there, and connects to it again once it is back. */
    virtual State look() = 0;
    /** What was sent has left when this returns. */
    virtual void close() = 0;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
