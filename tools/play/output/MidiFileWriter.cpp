#include "tools/play/output/MidiFileWriter.h"

#include "tools/common/Failure.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr int32 kLargestPulsesPerQuarterNote = 32767;
constexpr int kProgramsFirst = 0;
constexpr int kNotesThen = 1;

int32 quarterNoteOf(int32 sampleRate)
{
    auto pulses = sampleRate / 2;
    while (pulses > kLargestPulsesPerQuarterNote)
        pulses /= 2;
    return pulses;
}

void append(smf_track_t& track, int64 sample, const uint8* bytes, int length)
{
    auto* copy = const_cast<uint8*>(bytes); // libsmf copies it
    auto* event = smf_event_new_from_pointer(copy, length);
    if (!event)
        throw tools::Failure("The MIDI file cannot be put together.");
    smf_track_add_event_pulses(&track, event, static_cast<int>(sample));
}

} // namespace

MidiFileWriter::MidiFileWriter(int32 samplesPerSecond)
: sampleRate(samplesPerSecond)
, pulsesPerQuarterNote(quarterNoteOf(samplesPerSecond))
{
}

void MidiFileWriter::add(const std::vector<OutgoingNote>& notes)
{
    for (const auto& note : notes) {
        const auto status = static_cast<uint8>((note.velocity > 0 ? 0x90 : 0x80) | note.channel);
        messages.push_back({note.sample, kNotesThen, {status, note.pitch, note.velocity}, 3});
    }
}

void MidiFileWriter::add(const std::vector<ProgramChange>& changes, const TempoMap& tempo)
{
    for (const auto& change : changes) {
        const auto sample = tempo.sampleAt(change.pulse, sampleRate);
        const auto status = static_cast<uint8>(0xC0 | change.channel);
        messages.push_back({sample, kProgramsFirst, {status, change.program, 0}, 2});
    }
}

void MidiFileWriter::writeTempo(smf_track_t& track) const
{
    const auto quarterNote = static_cast<int32>(int64{1000000} * pulsesPerQuarterNote / sampleRate);
    const uint8 tempo[] = {0xFF,
                           0x51,
                           3,
                           static_cast<uint8>(quarterNote >> 16),
                           static_cast<uint8>(quarterNote >> 8),
                           static_cast<uint8>(quarterNote)};
    append(track, 0, tempo, static_cast<int>(sizeof(tempo)));
}

void MidiFileWriter::write(const std::string& path) const
{
    auto sorted = messages;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Message& a, const Message& b) {
        return a.sample != b.sample ? a.sample < b.sample : a.order < b.order;
    });
    const MidiFile file(smf_new());
    auto* track = file ? smf_track_new() : nullptr;
    if (!track || smf_set_ppqn(file.get(), pulsesPerQuarterNote) != 0)
        throw tools::Failure("The MIDI file cannot be put together.");
    smf_add_track(file.get(), track);
    writeTempo(*track);
    for (const auto& message : sorted)
        append(*track, message.sample, message.bytes, message.length);
    const auto last = sorted.empty() ? 0 : sorted.back().sample;
    const auto end = static_cast<int>(last + sampleRate + sampleRate / 2);
    if (smf_track_add_eot_pulses(track, end) != 0)
        throw tools::Failure("The MIDI file cannot be put together.");
    writeMidiFile(*file, path);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
