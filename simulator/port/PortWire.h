// PortWire: the wire to an instrument behind a MIDI port of the system's.
#pragma once

#include "simulator/MidiWire.h"
#include "simulator/port/MidiDriver.h"

#include <memory>
#include <thread>

namespace Steinberg {
namespace Vst {
namespace simulator {

class PortLine;
class ReceiverCalls;

/** Has two threads, so that neither the audio thread waits for the system nor the system for the
    plug-in: one opens the port, sends and closes it, the other calls the receiver. No lock is held
    while the receiver is called. */
class PortWire final : public MidiWire {
public:
    /** Opens the port, without waiting for it. @param ownEnd is called until close */
    PortWire(std::unique_ptr<MidiDriver> driver, std::string which, MidiReceiver& ownEnd);
    ~PortWire() override;

    bool sendFromAudioThread(const MidiMessage& message) override;
    bool send(const MidiMessage& message) override;
    void choosePort(const std::string& which) override;
    SimulatorControl::MidiPort port() const override;
    void waitForReceiver() override;
    /** Waits some seconds for the system, then leaves the port's thread to it. */
    void close() override;

    /** Closes every port of this process that is open: the last chance before exit. */
    static void closeAll();

private:
    std::shared_ptr<PortLine> line; ///< also held by the threads
    std::shared_ptr<ReceiverCalls> calls;
    std::thread sending;
    std::thread receiving;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
