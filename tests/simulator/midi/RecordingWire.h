// RecordingWire: a wire in a test's hands, which every instrument of the test program gets.
#pragma once

#include "simulator/MidiWire.h"

#include <mutex>
#include <string>
#include <vector>

namespace doubles {

/** Keeps what is sent, as "90 3C 7F", with "audio " before what came from the audio thread. */
class RecordingWire final : public Steinberg::Vst::simulator::MidiWire {
public:
    using MidiMessage = Steinberg::Vst::simulator::MidiMessage;
    using MidiReceiver = Steinberg::Vst::simulator::MidiReceiver;

    explicit RecordingWire(MidiReceiver& ownEnd);
    ~RecordingWire() override;

    /** Of the instrument that was made last and lives. */
    static RecordingWire* newest();

    bool sendFromAudioThread(const MidiMessage& message) override;
    bool send(const MidiMessage& message) override;
    void choosePort(const std::string& which) override { chosen.push_back(which); }
    Steinberg::Vst::SimulatorControl::MidiPort port() const override { return status; }
    void waitForReceiver() override { ++waits; }
    void close() override { isClosed = true; }

    /** What was sent since the last call. */
    std::vector<std::string> take();
    /** A message of the instrument's. */
    void arrive(const std::vector<Steinberg::uint8>& bytes);

    MidiReceiver& receiver;
    std::vector<std::string> chosen;
    Steinberg::Vst::SimulatorControl::MidiPort status;
    int waits = 0;
    bool isFull = false; ///< drops what is sent
    bool isClosed = false;

private:
    bool keep(const std::string& text);

    std::vector<std::string> sent;
};

} // namespace doubles
