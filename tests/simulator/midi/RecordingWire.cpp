#include "tests/simulator/midi/RecordingWire.h"

#include "simulator/PortModule.h"

#include <cstdio>
#include <utility>

namespace doubles {

using namespace Steinberg::Vst::simulator;

namespace {

RecordingWire* last = nullptr;

std::string textOf(const MidiMessage& message)
{
    std::string text;
    for (size_t index = 0; index < message.size; ++index) {
        char digits[4];
        std::snprintf(digits, sizeof(digits), "%s%02X", index > 0 ? " " : "", message.bytes[index]);
        text += digits;
    }
    return text;
}

} // namespace

RecordingWire::RecordingWire(MidiReceiver& ownEnd)
: receiver(ownEnd)
{
    last = this;
}

RecordingWire::~RecordingWire()
{
    if (last == this)
        last = nullptr;
}

RecordingWire* RecordingWire::newest()
{
    return last;
}

bool RecordingWire::sendFromAudioThread(const MidiMessage& message)
{
    return keep("audio " + textOf(message));
}

bool RecordingWire::send(const MidiMessage& message)
{
    return keep(textOf(message));
}

bool RecordingWire::keep(const std::string& text)
{
    if (!isFull)
        sent.push_back(text);
    return !isFull;
}

std::vector<std::string> RecordingWire::take()
{
    return std::exchange(sent, {});
}

void RecordingWire::arrive(const std::vector<Steinberg::uint8>& bytes)
{
    if (const auto message = MidiMessage::parse(bytes.data(), bytes.size()))
        receiver.arrived(*message);
}

} // namespace doubles

// Replaces the simulator's own function.
std::unique_ptr<Steinberg::Vst::simulator::MidiWire>
Steinberg::Vst::simulator::connectWire(MidiReceiver& receiver)
{
    return std::make_unique<doubles::RecordingWire>(receiver);
}
