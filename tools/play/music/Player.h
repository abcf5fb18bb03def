// Player: sends a song through a plug-in, block by block.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "public.sdk/source/vst/hosting/eventlist.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"
#include "tools/play/music/BlockTimes.h"
#include "tools/play/music/Song.h"
#include "tools/play/music/Timeline.h"

#include <bitset>
#include <functional>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** A note-on or note-off that the plug-in got. */
struct SentNote {
    int64 sample;   ///< from the song's start
    uint8 channel;  ///< 0 to 15
    uint8 pitch;    ///< 0 to 127
    uint8 velocity; ///< 0 to 127
    bool on;
};

/** A note that left the plug-in. */
struct OutgoingNote {
    int64 sample;   ///< from the song's start
    uint8 channel;  ///< 0 to 15
    uint8 pitch;    ///< 0 to 127
    uint8 velocity; ///< 0 to 127; 0 is a note-off
};

struct PlayResult {
    NoteCounts sent;
    NoteCounts left;
    std::vector<SentNote> incoming;     ///< in the order in which they were sent
    std::vector<OutgoingNote> outgoing; ///< in the order in which they left
    int64 samples = 0;
    int64 blocks = 0;
    int64 crowdedBlocks = 0; ///< blocks with more notes than the plug-in's queue holds
    int64 otherOutgoing = 0; ///< outgoing events that are no notes
    BlockTimes process;      ///< how long it took
    int64 lateBlocks = 0;    ///< blocks whose process took longer than they last
    Timeline timeline;
};

class Player {
public:
    struct Settings {
        int32 sampleRate = 44100; ///< Hz
        int32 blockSize = 512;    ///< samples
        bool realtime = false;    ///< wait for the clock; else as fast as possible
        bool endless = false;     ///< go on after the song, until stopped
    };

    /** What the song's host does between two blocks, on the main thread.
        @param position, length in samples
        @param blockSeconds length of the block that follows
        @param changes parameter changes that go with that block */
    using BetweenBlocks = std::function<void(int64 position, int64 length, double blockSeconds,
                                             ParameterChanges& changes)>;

    /** The largest number of events that the plug-in's outgoing queue holds. */
    static constexpr int64 kPlugInQueue = 100;

    /** @param data process data with the plug-in's buffers; events, parameter changes, context and
        sample count are set for each block
        All borrowed; they outlive this object. */
    Player(IAudioProcessor& processor, ProcessData& data, const Song& song,
           const Settings& settings);

    /** What somebody plays meanwhile: fills in the next note that waits, or gives false. */
    using LiveNotes = std::function<bool(NoteEvent& note)>;
    /** Whether the run is to end before its time. */
    using StopAsked = std::function<bool()>;
    /** Plays live: each block also takes what somebody plays, and a run that is stopped, or a song
        that leaves notes sounding, ends with a block that ends them. Before run. */
    void playLive(LiveNotes notes, StopAsked isStopAsked);

    /** Plays the whole song and half a second more, in which late events leave. */
    PlayResult run(const BetweenBlocks& betweenBlocks = {});

    /** The channels on which a note that was sent sounds. */
    std::bitset<16> soundingChannels() const;

private:
    bool goesOn(int64 start, int64 length) const;
    void prepareResult(int64 length);
    void sendNotes(int64 start, int32 count);
    void sendLiveNotes(int64 start);
    void endNotes(int64 start);
    void send(const NoteEvent& note, int64 start, int64 sample);
    void processBlock(int64 start, int32 count);
    void takeOutgoing(int64 start);
    int32 mostNotesInABlock() const;

    static constexpr size_t kPitches = 128;
    static constexpr size_t kNotes = 16 * kPitches;

    IAudioProcessor& processor;
    ProcessData& data;
    const Song& song;
    Settings settings;
    ProcessContext context{};
    EventList input;
    EventList output;
    ParameterChanges changes;
    size_t next = 0;
    LiveNotes liveNotes;
    StopAsked stopAsked;
    std::bitset<kNotes> sounding; ///< by channel and pitch
    PlayResult result;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
