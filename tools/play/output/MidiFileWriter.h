// MidiFileWriter: collects notes by sample and writes them as a MIDI file.
#pragma once

#include "tools/play/music/MidiFile.h"
#include "tools/play/music/Player.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** One pulse of the file is one sample, so that the file keeps the timing to the sample; its tempo
    is a round number and not the song's. */
class MidiFileWriter {
public:
    /** @param sampleRate in Hz, even; 44,100 to 192,000 */
    explicit MidiFileWriter(int32 sampleRate);

    void add(const std::vector<OutgoingNote>& notes);

    /** Adds program changes at their place in the song; at one sample they come before notes. */
    void add(const std::vector<ProgramChange>& changes, const TempoMap& tempo);

    /** Writes a format 0 file that ends one and a half seconds after its last event.
        @throws Failure when the file cannot be written */
    void write(const std::string& path) const;

private:
    struct Message {
        int64 sample;
        int order; ///< within one sample
        uint8 bytes[3];
        int length;
    };
    void writeTempo(smf_track_t& track) const;

    int32 sampleRate;
    int32 pulsesPerQuarterNote;
    std::vector<Message> messages;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
