// RecordingWire: the wire of every instrument in this test program; a test controls it.
#pragma once

#include "simulator/MidiWire.h"

#include <mutex>
#include <string>
#include <vector>

namespace doubles {

/** Keeps what is sent as texts such as "90 3C 7F", with "audio " before those of the
    audio thread. */
class RecordingWire final : public Steinberg::Vst::simulator::MidiWire {
public:
    using MidiMessage = Steinberg::Vst::simulator::MidiMessage;
    using MidiReceiver = Steinberg::Vst::simulator::MidiReceiver;

    explicit RecordingWire(MidiReceiver& ownEnd);
    ~RecordingWire() override;

    /** The wire of the instrument that was made last, or null when it is destroyed. */
    static RecordingWire* newest();

    bool sendFromAudioThread(const MidiMessage& message) override;
    bool send(const MidiMessage& message) override;
    void choosePort(const std::string& which) override { chosen.push_back(which); }
    Steinberg::Vst::SimulatorControl::MidiPort port() const override { return status; }
    void waitForReceiver() override { ++waits; }
    void close() override { isClosed = true; }

    /** What was sent since the last call. */
    std::vector<std::string> take();
    /** A message comes from the instrument. */
    void arrive(const std::vector<Steinberg::uint8>& bytes);

    MidiReceiver& receiver;
    std::vector<std::string> chosen;
    Steinberg::Vst::SimulatorControl::MidiPort status;
    int waits = 0;
    bool isFull = false; ///< then drops what is sent
    bool isClosed = false;

private:
    bool keep(const std::string& text);

    std::vector<std::string> sent;
};

} // namespace doubles
