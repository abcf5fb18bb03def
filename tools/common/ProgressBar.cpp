#include "tools/common/ProgressBar.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {
constexpr int kWidth = 40;
}

ProgressBar::~ProgressBar()
{
    wipe();
}

void ProgressBar::show(double done, double all, const std::string& remark)
{
    showText(line(done, all, remark));
}

void ProgressBar::showText(std::string text)
{
    if (!stream || text == shown)
        return;
    // What the former text was longer by is blanked out.
    const std::string rest(shown.size() > text.size() ? shown.size() - text.size() : 0, ' ');
    *stream << '\r' << text << rest << std::flush;
    shown = std::move(text);
}

void ProgressBar::wipe()
{
    if (!shown.empty())
        *stream << '\r' << std::string(shown.size(), ' ') << '\r' << std::flush;
    shown.clear();
}

std::string ProgressBar::line(double done, double all, const std::string& remark)
{
    const auto part = all > 0 ? std::clamp(done / all, 0.0, 1.0) : 1.0;
    const auto filled = static_cast<size_t>(part * kWidth);
    char percent[16];
    std::snprintf(percent, sizeof(percent), "%3d %%", static_cast<int>(part * 100));
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, ' ') + "] " + percent +
           (remark.empty() ? "" : "  ") + remark;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
