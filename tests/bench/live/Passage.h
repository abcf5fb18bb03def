// Passage: when the notes of a piece of a song were due, left their block and came to the port.
#pragma once

#include "tests/live/JackPeer.h"
#include "tools/play/music/Song.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/** Microseconds of the steady clock. */
using Time = int64_t;

/** One playing of a song's first notes. */
struct Passage {
    Time begin = 0;           ///< of the song
    std::vector<Time> blocks; ///< when each block was begun, the first one's at the song's begin
};

/** What several passages came to, in microseconds. */
class Times {
public:
    /** Takes the notes that are due before the end, which came in their order.
        @param end in samples @return how many of them did not come, or with other bytes */
    int64_t add(const Steinberg::Vst::play::Song& song, int64_t end, int sampleRate, int blockSize,
                const Passage& passage, const std::vector<live::JackPeer::Message>& received);

    size_t notes() const { return latencies.size(); }
    /** From the begin of a note's block to the port. @param part 0 to 1: 0.5 for the median */
    double latency(double part) const { return at(latencies, part); }
    /** From the earliest to the latest of the middle 98 %, against their times in the song. */
    double jitter() const { return at(lates, 0.99) - at(lates, 0.01); }

private:
    static double at(std::vector<double> values, double part);

    std::vector<double> latencies;
    std::vector<double> lates; ///< behind the song's own time
};

/** The current time. */
Time now();

/** Many short notes on all channels at irregular times, always the same. */
std::string denseSong(double seconds);

} // namespace bench
