#include "simulator/InstrumentReport.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr int32 channels = 16;

const char* reportFile()
{
    return std::getenv("SIMULATOR_REPORT");
}

void append(const std::string& text)
{
    if (const char* file = reportFile())
        std::ofstream(file, std::ios::app) << text << std::flush;
}

void writeNotes(std::ostream& text, SimulatorControl& instrument)
{
    for (int32 channel = 0; channel < channels; ++channel) {
        if (const uint32 count = instrument.noteOnsReceived(channel))
            text << "note-ons " << channel << ' ' << count << '\n';
        if (const uint32 count = instrument.noteOffsReceived(channel))
            text << "note-offs " << channel << ' ' << count << '\n';
    }
}

void writePort(std::ostream& text, const SimulatorControl::MidiPort& port)
{
    using State = SimulatorControl::MidiPort::State;
    if (port.state == State::unused)
        return;
    text << "midi-port " << (port.state == State::open ? port.name : "none: " + port.reason) << '\n'
         << "midi-left " << port.left << '\n'
         << "midi-lost " << port.lost << '\n'
         << "midi-arrived " << port.arrived << '\n';
}

} // namespace

void InstrumentReport::begin(int number)
{
    append("begin " + std::to_string(number) + '\n');
}

void InstrumentReport::end(int number, SimulatorControl& instrument)
{
    if (!reportFile())
        return;
    std::ostringstream text;
    text << "end " << number << "\nhost-type " << instrument.hostType() << '\n';
    writeNotes(text, instrument);
    text << "other-midi " << instrument.otherMidiReceived() << '\n';
    text << "automation " << instrument.automationReceived() << '\n';
    writePort(text, instrument.midiPort());
    for (const uint32 id : instrument.parameterIds())
        text << "parameter " << id << ' ' << instrument.parameterValue(id) << '\n';
    for (const auto& call : instrument.log())
        text << "call " << call << '\n';
    append(text.str());
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
