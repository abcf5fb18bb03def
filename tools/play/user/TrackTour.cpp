#include "tools/play/user/TrackTour.h"

#include "tools/common/Failure.h"

#include <numeric>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr int32 kParts = 16;
} // namespace

TracksReport TrackTour::run(std::vector<int> tracks)
{
    const auto count = static_cast<int>(studio.project().tracks.size());
    for (const auto track : tracks)
        if (track < 1 || track > count)
            throw tools::Failure("There is no track " + std::to_string(track) +
                                 "; the project has " + std::to_string(count) + ".");
    if (tracks.empty()) {
        tracks.resize(static_cast<size_t>(count));
        std::iota(tracks.begin(), tracks.end(), 1);
    }
    TracksReport report;
    report.project = studio.project();
    for (const auto track : tracks)
        select(track - 1, report);
    for (int32 part = 0; part < kParts; ++part)
        choose(part, report);
    return report;
}

void TrackTour::select(int32 track, TracksReport& report)
{
    const auto before = control.channelsTold();
    studio.tree().select(track);
    TracksReport::Selection selection{track, {}, control.shownPart()};
    if (control.channelsTold() > before)
        selection.toldChannel = control.lastChannelTold();
    report.selections.push_back(selection);
}

void TrackTour::choose(int32 part, TracksReport& report)
{
    const auto before = studio.tree().selections();
    control.choosePart(part);
    report.choices.push_back(
        {part, studio.tree().selections() > before, studio.tree().selectedTrack()});
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
