// ProgressBar: one line on a terminal.
#pragma once

#include <iosfwd>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Draws over its own line; writes only when the picture changes, and wipes the line at its end. */
class ProgressBar {
public:
    /** @param terminal borrowed; null draws nothing */
    explicit ProgressBar(std::ostream* terminal)
    : stream(terminal)
    {
    }
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /** @param done, all in seconds of the song */
    void show(double done, double all);

    /** The line for a state: "[#####     ]  50 %  1:00 of 2:00". */
    static std::string line(double done, double all);

private:
    std::ostream* stream;
    std::string shown;
};

/** Seconds as minutes and seconds: "2:05". */
std::string minutes(double seconds);

} // namespace play
} // namespace Vst
} // namespace Steinberg
