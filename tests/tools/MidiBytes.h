// MidiBytes: MIDI files put together byte by byte, so that the tests owe nothing to a library.
#pragma once

#include <string>

namespace doubles {

/** One track. Events are given with the pulses since the one before. */
class MidiTrack {
public:
    MidiTrack& event(unsigned delta, const std::string& bytes);
    MidiTrack& noteOn(unsigned delta, int channel, int pitch, int velocity);
    MidiTrack& noteOff(unsigned delta, int channel, int pitch, int velocity);
    MidiTrack& program(unsigned delta, int channel, int number);
    MidiTrack& tempo(unsigned delta, unsigned microsecondsPerQuarterNote);

    /** The chunk, ended after delta pulses. */
    std::string chunk(unsigned delta = 0) const;

private:
    std::string data;
};

/** The header chunk. division is the two bytes as a number. */
std::string midiHeader(int format, int tracks, int division);

/** A format 0 file with one track. */
std::string midiFile(int division, const MidiTrack& track);

} // namespace doubles
