// PortSender: the sending thread of a MIDI port.
#pragma once

#include "simulator/port/MidiDriver.h"
#include "simulator/port/PortLine.h"

#include <bitset>
#include <chrono>
#include <memory>
#include <string>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Opens the chosen port, sends what waits in the line, looks after the port, and in the end stops
    every note that sounds and closes it. It is the only one that uses the driver. [one thread] */
class PortSender {
public:
    PortSender(std::shared_ptr<PortLine> line, std::unique_ptr<MidiDriver> driver);

    /** The thread's work: returns after line->ending is set, when what waited is sent and the port
        is closed. */
    void run();

private:
    using Clock = std::chrono::steady_clock;
    using State = PortLine::State;

    static constexpr int32 channels = 16;
    static constexpr int32 pitches = 128;

    void followChoice();
    void sendAll();
    void send(const MidiMessage& message);
    bool pass(const MidiMessage& message);
    void lookAfterPort();
    void markAway();
    void markBack();
    void leaveLostPort();
    void tellReturn();
    void leavePort();
    void endNotes();

    const std::shared_ptr<PortLine> line;
    const std::unique_ptr<MidiDriver> driver;
    State state = State::unused; ///< unused: the driver has no port
    std::string name;
    bool isFirstChoice = true; ///< what was sent before the first port opened waits for it
    Clock::time_point nextLook = Clock::now();
    std::bitset<static_cast<size_t>(channels* pitches)> sounding; ///< by channel, then pitch
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
