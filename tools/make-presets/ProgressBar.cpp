#include "tools/make-presets/ProgressBar.h"

#include <ostream>
#include <string>

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

constexpr size_t kWidth = 50;

std::string bar(size_t percent)
{
    const auto filled = percent * kWidth / 100;
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, ' ') + "] " +
           std::to_string(percent) + " %";
}

} // namespace

ProgressBar::ProgressBar(std::ostream* terminal, size_t count)
: stream(terminal)
, all(count)
{
}

ProgressBar::~ProgressBar()
{
    wipe();
}

void ProgressBar::show(size_t done)
{
    const int percent = all == 0 ? 100 : static_cast<int>(done * 100 / all);
    if (!stream || percent == shownPercent)
        return;
    *stream << '\r' << bar(static_cast<size_t>(percent)) << std::flush;
    shownPercent = percent;
}

void ProgressBar::wipe()
{
    if (stream && shownPercent >= 0)
        *stream << '\r' << std::string(kWidth + 8, ' ') << '\r' << std::flush;
    shownPercent = -1;
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
