// LoopWire: the wire without an instrument: it sends notes back.
#pragma once

#include "simulator/MidiWire.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Gives notes to the receiver before send returns, and drops everything else. */
class LoopWire final : public MidiWire {
public:
    /** @param ownEnd must outlive this object */
    explicit LoopWire(MidiReceiver& ownEnd)
    : receiver(ownEnd)
    {
    }

    bool sendFromAudioThread(const MidiMessage& message) override { return send(message); }
    bool send(const MidiMessage& message) override
    {
        if (message.isNote())
            receiver.arrived(message);
        return true;
    }
    void choosePort(const std::string&) override {}
    SimulatorControl::MidiPort port() const override { return {}; }
    void waitForReceiver() override {}
    void close() override {}

private:
    MidiReceiver& receiver;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
