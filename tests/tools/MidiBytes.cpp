#include "tests/tools/MidiBytes.h"

namespace doubles {

namespace {

std::string bigEndian(unsigned value, int width)
{
    std::string bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::string variableLength(unsigned value)
{
    std::string bytes(1, static_cast<char>(value & 0x7F));
    while ((value >>= 7) != 0)
        bytes.insert(bytes.begin(), static_cast<char>(0x80 | (value & 0x7F)));
    return bytes;
}

std::string message(int status, int first, int second)
{
    return {static_cast<char>(status), static_cast<char>(first), static_cast<char>(second)};
}

} // namespace

MidiTrack& MidiTrack::event(unsigned delta, const std::string& bytes)
{
    data += variableLength(delta) + bytes;
    return *this;
}

MidiTrack& MidiTrack::noteOn(unsigned delta, int channel, int pitch, int velocity)
{
    return event(delta, message(0x90 | channel, pitch, velocity));
}

MidiTrack& MidiTrack::noteOff(unsigned delta, int channel, int pitch, int velocity)
{
    return event(delta, message(0x80 | channel, pitch, velocity));
}

MidiTrack& MidiTrack::program(unsigned delta, int channel, int number)
{
    return event(delta, message(0xC0 | channel, number, 0).substr(0, 2));
}

MidiTrack& MidiTrack::tempo(unsigned delta, unsigned microsecondsPerQuarterNote)
{
    return event(delta, std::string("\xFF\x51\x03") + bigEndian(microsecondsPerQuarterNote, 3));
}

std::string MidiTrack::chunk(unsigned delta) const
{
    const auto whole = data + variableLength(delta) + std::string("\xFF\x2F\x00", 3);
    return "MTrk" + bigEndian(static_cast<unsigned>(whole.size()), 4) + whole;
}

std::string midiHeader(int format, int tracks, int division)
{
    return "MThd" + bigEndian(6, 4) + bigEndian(static_cast<unsigned>(format), 2) +
           bigEndian(static_cast<unsigned>(tracks), 2) +
           bigEndian(static_cast<unsigned>(division), 2);
}

std::string midiFile(int division, const MidiTrack& track)
{
    return midiHeader(0, 1, division) + track.chunk();
}

} // namespace doubles
