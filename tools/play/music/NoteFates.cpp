#include "tools/play/music/NoteFates.h"

#include <algorithm>
#include <deque>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr size_t kKeys = size_t{16} * 128;

size_t keyOf(uint8 channel, uint8 pitch)
{
    return (channel & 0x0FU) * 128U + (pitch & 0x7FU);
}

size_t kindOf(uint8 channel, uint8 pitch, bool on)
{
    return keyOf(channel, pitch) * 2 + (on ? 1 : 0);
}

/** The events of each kind, as positions in the list that they come from. */
using Kinds = std::vector<std::vector<size_t>>;

class Matching {
public:
    Matching(const PlayResult& result, int32 samplesInABlock)
    : played(result)
    , blockSize(samplesInABlock)
    , sentKinds(kKeys * 2)
    , leftKinds(kKeys * 2)
    , back(result.incoming.size(), NoteFate::kNever)
    , asked(result.outgoing.size(), false)
    {
        for (size_t i = 0; i < played.incoming.size(); ++i) {
            const auto& event = played.incoming[i];
            sentKinds[kindOf(event.channel, event.pitch, event.on)].push_back(i);
        }
        for (size_t i = 0; i < played.outgoing.size(); ++i) {
            const auto& event = played.outgoing[i];
            leftKinds[kindOf(event.channel, event.pitch, event.velocity > 0)].push_back(i);
        }
        for (size_t kind = 0; kind < leftKinds.size(); ++kind)
            match(sentKinds[kind], leftKinds[kind]);
    }

    /** When each sent event left, or NoteFate::kNever. */
    const std::vector<int64>& whenBack() const { return back; }

    std::vector<OutgoingNote> extra() const
    {
        std::vector<OutgoingNote> result;
        for (size_t i = 0; i < asked.size(); ++i)
            if (!asked[i])
                result.push_back(played.outgoing[i]);
        return result;
    }

private:
    void match(const std::vector<size_t>& sent, const std::vector<size_t>& left)
    {
        auto candidates = sent.size();
        for (auto event = left.rbegin(); event != left.rend(); ++event) {
            const auto sample = played.outgoing[*event].sample;
            const auto blockEnd = (sample / blockSize + 1) * blockSize;
            while (candidates > 0 && played.incoming[sent[candidates - 1]].sample >= blockEnd)
                --candidates;
            if (candidates == 0)
                return;
            back[sent[--candidates]] = sample;
            asked[*event] = true;
        }
    }

    const PlayResult& played;
    int32 blockSize;
    Kinds sentKinds;
    Kinds leftKinds;
    std::vector<int64> back;
    std::vector<bool> asked;
};

/** Joins note-ons and note-offs. Of several notes of one key the oldest ends first. */
class NoteCollector {
public:
    explicit NoteCollector(int64 lengthInSamples)
    : length(lengthInSamples)
    {
    }

    void add(const SentNote& event, int64 back)
    {
        auto& open = sounding[keyOf(event.channel, event.pitch)];
        if (event.on) {
            open.push_back(notes.size());
            notes.push_back({event.channel, event.pitch, event.velocity, true, false, event.sample,
                             length, back});
            return;
        }
        if (open.empty()) {
            notes.push_back({event.channel, event.pitch, 0, false, true, event.sample, event.sample,
                             NoteFate::kNever, back});
            return;
        }
        auto& note = notes[open.front()];
        open.pop_front();
        note.ends = true;
        note.end = event.sample;
        note.endBack = back;
    }

    std::vector<NoteFate> notes;

private:
    int64 length;
    std::vector<std::deque<size_t>> sounding = std::vector<std::deque<size_t>>(kKeys);
};

} // namespace

int64 NoteFates::lostStarts() const
{
    return std::count_if(notes.begin(), notes.end(),
                         [](const NoteFate& note) { return note.lostItsStart(); });
}

int64 NoteFates::lostEnds() const
{
    return std::count_if(notes.begin(), notes.end(),
                         [](const NoteFate& note) { return note.lostItsEnd(); });
}

NoteFates fatesOf(const PlayResult& played, int32 blockSize)
{
    const Matching matching(played, blockSize);
    NoteCollector collector(played.samples);
    for (size_t i = 0; i < played.incoming.size(); ++i)
        collector.add(played.incoming[i], matching.whenBack()[i]);
    return {std::move(collector.notes), matching.extra()};
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
