// MidiBytes: MIDI files put together byte by byte, without the library that play uses for them.
#pragma once

#include <string>

namespace doubles {

/** One track. delta: pulses since the event before. */
class MidiTrack {
public:
    MidiTrack& event(unsigned delta, const std::string& bytes);
    MidiTrack& noteOn(unsigned delta, int channel, int pitch, int velocity);
    MidiTrack& noteOff(unsigned delta, int channel, int pitch, int velocity);
    MidiTrack& program(unsigned delta, int channel, int number);
    MidiTrack& tempo(unsigned delta, unsigned microsecondsPerQuarterNote);

    /** The track's chunk, with its end delta pulses after the last event. */
    std::string chunk(unsigned delta = 0) const;

private:
    std::string data;
};

/** The header chunk.
    @param division its two bytes as a number: pulses in a quarter note, or film frames */
std::string midiHeader(int format, int tracks, int division);

/** A format 0 file with one track. */
std::string midiFile(int division, const MidiTrack& track);

} // namespace doubles
