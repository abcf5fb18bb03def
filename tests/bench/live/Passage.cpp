#include "tests/bench/live/Passage.h"

#include "tests/tools/MidiBytes.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <random>

namespace bench {

using Steinberg::Vst::play::NoteEvent;
using Steinberg::Vst::play::Song;

namespace {

constexpr double kMicroseconds = 1e6;
constexpr int kPulses = 480;
constexpr double kPulsesPerSecond = 2 * kPulses; // at the usual tempo
constexpr int kNotesPerSecond = 120;
constexpr double kNoteSeconds = 0.06;
constexpr uint8_t kFullVelocity = 127; // what the plug-in makes of any

/** The same note, however its end is written. */
bool isSame(const NoteEvent& note, const std::vector<uint8_t>& bytes)
{
    return bytes.size() == 3 && (bytes[0] & 0x0F) == note.channel && bytes[1] == note.pitch &&
           ((bytes[0] & 0xF0) == 0x90 && bytes[2] == kFullVelocity) == note.on;
}

} // namespace

Time now()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int64_t Times::add(const Song& song, int64_t end, int sampleRate, int blockSize,
                   const Passage& passage, const std::vector<live::JackPeer::Message>& received)
{
    int64_t lost = 0;
    size_t next = 0;
    for (const auto& note : song.notes()) {
        const auto sample = song.tempo().sampleAt(note.pulse, sampleRate);
        const auto block = static_cast<size_t>(sample / blockSize);
        if (sample >= end || block >= passage.blocks.size())
            break;
        if (next >= received.size() || !isSame(note, received[next].bytes)) {
            ++lost;
            continue;
        }
        const auto arrival = received[next++].time;
        latencies.push_back(static_cast<double>(arrival - passage.blocks[block]));
        lates.push_back(static_cast<double>(arrival - passage.begin) -
                        kMicroseconds * static_cast<double>(sample) / sampleRate);
    }
    return lost;
}

double Times::at(std::vector<double> values, double part)
{
    if (values.empty())
        return 0;
    const auto last = static_cast<double>(values.size() - 1);
    const auto place = values.begin() + static_cast<std::ptrdiff_t>(part * last);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

std::string denseSong(double seconds)
{
    std::mt19937 random(1); // its numbers are the same everywhere
    std::multimap<unsigned, std::pair<bool, unsigned>> events;
    const auto count = static_cast<unsigned>(seconds * kNotesPerSecond);
    const auto length = static_cast<unsigned>(seconds * kPulsesPerSecond);
    for (unsigned note = 0; note < count; ++note) {
        const auto pulse = static_cast<unsigned>(random() % length);
        events.insert({pulse, {true, note}});
        events.insert(
            {pulse + static_cast<unsigned>(kNoteSeconds * kPulsesPerSecond), {false, note}});
    }
    doubles::MidiTrack track;
    unsigned last = 0;
    for (const auto& [pulse, event] : events) {
        const auto channel = static_cast<int>(event.second % 16);
        const auto pitch = static_cast<int>(event.second / 16 % 128);
        if (event.first)
            track.noteOn(pulse - last, channel, pitch, kFullVelocity);
        else
            track.noteOff(pulse - last, channel, pitch, 0);
        last = pulse;
    }
    return doubles::midiFile(kPulses, track);
}

} // namespace bench
