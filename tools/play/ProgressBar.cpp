#include "tools/play/ProgressBar.h"

#include <algorithm>
#include <cstdio>
#include <ostream>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr int kWidth = 40;
}

ProgressBar::~ProgressBar()
{
    if (!shown.empty())
        *stream << '\r' << std::string(shown.size(), ' ') << '\r' << std::flush;
}

void ProgressBar::show(double done, double all)
{
    if (!stream)
        return;
    auto text = line(done, all);
    if (text == shown)
        return;
    *stream << '\r' << text << std::flush;
    shown = std::move(text);
}

std::string ProgressBar::line(double done, double all)
{
    const auto part = all > 0 ? std::clamp(done / all, 0.0, 1.0) : 1.0;
    const auto filled = static_cast<size_t>(part * kWidth);
    char percent[16];
    std::snprintf(percent, sizeof(percent), "%3d %%", static_cast<int>(part * 100));
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, ' ') + "] " + percent +
           "  " + minutes(std::min(done, all)) + " of " + minutes(all);
}

std::string minutes(double seconds)
{
    const auto whole = static_cast<long long>(seconds);
    char text[32];
    std::snprintf(text, sizeof(text), "%lld:%02lld", whole / 60, whole % 60);
    return text;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
