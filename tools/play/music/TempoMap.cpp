#include "tools/play/music/TempoMap.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr int64 kMicrosecondsPerSecond = 1000000;
constexpr int32 kDefaultMicrosecondsPerQuarterNote = 500000;
} // namespace

TempoMap::TempoMap(int32 pulsesPerQuarterNote)
: unitsPerSecond(kMicrosecondsPerSecond * pulsesPerQuarterNote)
, changes{{0, kDefaultMicrosecondsPerQuarterNote, 0}}
{
}

void TempoMap::change(int64 pulse, int32 microsecondsPerQuarterNote)
{
    const auto time = timeOf(pulse);
    if (changes.back().pulse == pulse)
        changes.pop_back();
    changes.push_back({pulse, microsecondsPerQuarterNote, time});
}

const TempoMap::Change& TempoMap::changeBefore(int64 pulse) const
{
    const auto after =
        std::upper_bound(changes.begin(), changes.end(), pulse,
                         [](int64 wanted, const Change& change) { return wanted < change.pulse; });
    return after == changes.begin() ? *after : *(after - 1);
}

int64 TempoMap::timeOf(int64 pulse) const
{
    const auto& change = changeBefore(pulse);
    return change.time + (pulse - change.pulse) * change.microsecondsPerQuarterNote;
}

int64 TempoMap::sampleAt(int64 pulse, int32 sampleRate) const
{
    // Whole seconds apart from their rest: the product with the rate then fits for any length.
    const auto time = timeOf(pulse);
    const auto seconds = time / unitsPerSecond;
    const auto rest = time % unitsPerSecond;
    return seconds * sampleRate + (rest * sampleRate + unitsPerSecond / 2) / unitsPerSecond;
}

int64 TempoMap::secondsAt(int64 pulse) const
{
    return timeOf(pulse) / unitsPerSecond;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
