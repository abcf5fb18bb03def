// NoteFates: what became of each note that was sent.
#pragma once

#include "tools/play/music/Player.h"

#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** One note of the song, with what came back of it. Positions are samples from the song's start. */
struct NoteFate {
    static constexpr int64 kNever = -1;

    uint8 channel;  ///< 0 to 15
    uint8 pitch;    ///< 0 to 127
    uint8 velocity; ///< 0 to 127; 0 for an end without a beginning
    bool begins;    ///< false for a note-off that belongs to no note-on
    bool ends;      ///< false for a note-on that no note-off follows
    int64 start;
    int64 end; ///< of the song, for a note that does not end; start, for one without beginning
    int64 startBack = kNever; ///< when its note-on left
    int64 endBack = kNever;   ///< when its note-off left

    bool lostItsStart() const { return begins && startBack == kNever; }
    bool lostItsEnd() const { return ends && endBack == kNever; }
};

struct NoteFates {
    std::vector<NoteFate> notes;     ///< in the order in which they were sent
    std::vector<OutgoingNote> extra; ///< what left without having been sent

    int64 lostStarts() const;
    int64 lostEnds() const;
};

/** Finds for each event that was sent the one that left for it: of the same channel and key, and a
    note-on or note-off as it is. The plug-in keeps their order and drops the oldest: the last one
    that left belongs to the last one sent before its block's end, and so on backwards. */
NoteFates fatesOf(const PlayResult& played, int32 blockSize);

} // namespace play
} // namespace Vst
} // namespace Steinberg
