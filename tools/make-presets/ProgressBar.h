// ProgressBar: one line on a terminal.
#pragma once

#include <cstddef>
#include <iosfwd>

namespace Steinberg {
namespace Vst {
namespace makepresets {

/** Draws over its own line, and only when the picture changes; wipes the line at its end. */
class ProgressBar {
public:
    /** @param terminal borrowed; null draws nothing */
    ProgressBar(std::ostream* terminal, size_t all);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void show(size_t done);
    /** Takes the line away until the next show, for a text of somebody else's. */
    void wipe();

private:
    std::ostream* const stream;
    const size_t all;
    int shownPercent = -1;
};

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
