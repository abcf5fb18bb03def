#include "tools/play/music/Song.h"

#include "tools/common/Failure.h"

#include <algorithm>
#include <filesystem>
#include <numeric>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
/** Up to this length the sample positions at 192 kHz fit the 31 bits of a MIDI file's pulses. */
constexpr int64 kLongestSongInSeconds = int64{3} * 60 * 60;
constexpr int32 kUsualPulses = 480; ///< per quarter note
} // namespace

void NoteCounts::count(uint8 channel, bool on)
{
    ++(on ? ons : offs)[channel & 0x0F];
}

int64 NoteCounts::allOns() const
{
    return std::accumulate(ons.begin(), ons.end(), int64{0});
}

int64 NoteCounts::allOffs() const
{
    return std::accumulate(offs.begin(), offs.end(), int64{0});
}

Song::Song()
: tempoMap(kUsualPulses)
{
}

Song::Song(const std::string& path)
: Song(path, readMidiFile(path))
{
}

Song::Song(const std::string& path, MidiFile file)
: fileName(std::filesystem::path(path).filename().string())
, tempoMap(file->ppqn)
{
    readTempo(*file);
    readEvents(*file);
    if (noteEvents.empty())
        throw tools::Failure("\"" + path + "\" has no notes to play.");
    if (tempoMap.secondsAt(length) >= kLongestSongInSeconds)
        throw tools::Failure("\"" + path + "\" lasts longer than three hours.");
}

void Song::readTempo(smf_t& file)
{
    for (int i = 0; const auto* change = smf_get_tempo_by_number(&file, i); ++i)
        if (change->microseconds_per_quarter_note > 0)
            tempoMap.change(change->time_pulses, change->microseconds_per_quarter_note);
}

void Song::readEvents(smf_t& file)
{
    smf_rewind(&file);
    while (const auto* event = smf_get_next_event(&file))
        readEvent(*event);
}

void Song::readEvent(const smf_event_t& event)
{
    if (event.time_pulses < 0)
        throw tools::Failure("\"" + fileName + "\" is a damaged MIDI file.");
    length = std::max<int64>(length, event.time_pulses);
    if (event.midi_buffer_length < 2)
        return;
    const auto* bytes = event.midi_buffer;
    const auto channel = static_cast<uint8>(bytes[0] & 0x0F);
    const auto data1 = static_cast<uint8>(bytes[1] & 0x7F);
    const int kind = bytes[0] & 0xF0;
    if (kind == 0xC0)
        programs.push_back({event.time_pulses, channel, data1});
    if ((kind != 0x80 && kind != 0x90) || event.midi_buffer_length < 3)
        return;
    const auto velocity = static_cast<uint8>(bytes[2] & 0x7F);
    noteEvents.push_back(
        {event.time_pulses, channel, data1, velocity, kind == 0x90 && velocity > 0});
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
