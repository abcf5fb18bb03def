// Song: what play takes from a MIDI file.
#pragma once

#include "tools/play/music/MidiFile.h"
#include "tools/play/music/TempoMap.h"

#include <array>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** One note-on or note-off of the file; a note-on of velocity 0 is a note-off, as MIDI has it. */
struct NoteEvent {
    int64 pulse;
    uint8 channel;  ///< 0 to 15
    uint8 pitch;    ///< 0 to 127
    uint8 velocity; ///< 0 to 127
    bool on;
};

/** A program change of the file. */
struct ProgramChange {
    int64 pulse;
    uint8 channel; ///< 0 to 15
    uint8 program; ///< 0 to 127
};

/** Number of note-ons and note-offs a channel. */
struct NoteCounts {
    std::array<int64, 16> ons{};
    std::array<int64, 16> offs{};

    void count(uint8 channel, bool on);
    int64 allOns() const;
    int64 allOffs() const;
};

class Song {
public:
    /** No song: nothing to play, at a tempo of 120. */
    Song();

    /** @throws Failure as readMidiFile does, also for a song without notes or of three hours */
    explicit Song(const std::string& path);

    /** The file's name without its folder. */
    const std::string& name() const { return fileName; }

    /** In the order in which they are played: by pulse, within one pulse by track, within a track
        as the file has them. */
    const std::vector<NoteEvent>& notes() const { return noteEvents; }

    /** In playing order. */
    const std::vector<ProgramChange>& programChanges() const { return programs; }

    const TempoMap& tempo() const { return tempoMap; }

    /** The position of the last event of any kind, at least of the last note. */
    int64 lengthInPulses() const { return length; }

private:
    explicit Song(const std::string& path, MidiFile file);
    void readTempo(smf_t& file);
    void readEvents(smf_t& file);
    void readEvent(const smf_event_t& event);

    std::string fileName;
    TempoMap tempoMap;
    std::vector<NoteEvent> noteEvents;
    std::vector<ProgramChange> programs;
    int64 length = 0;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
