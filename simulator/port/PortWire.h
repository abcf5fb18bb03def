// PortWire: the wire to an instrument at one of the system's MIDI ports.
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

/** Has two threads: PortSender opens the port, sends and closes it on one; the other calls the
    receiver. So the audio thread does not wait for the system, nor the system for the plug-in. No
    lock is held while the receiver is called. */
class PortWire final : public MidiWire {
public:
    /** Begins to open the port and returns at once.
        @param which as in SIMULATOR_MIDI_PORT
        @param ownEnd the receiver; is called until close returns */
    PortWire(std::unique_ptr<MidiDriver> driver, std::string which, MidiReceiver& ownEnd);
    ~PortWire() override;

    bool sendFromAudioThread(const MidiMessage& message) override;
    bool send(const MidiMessage& message) override;
    void choosePort(const std::string& which) override;
    SimulatorControl::MidiPort port() const override;
    void waitForReceiver() override;
    /** Waits at most three seconds for the system; after that leaves the thread running. */
    void close() override;

    /** Closes every wire of this process. Called at exit. */
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
