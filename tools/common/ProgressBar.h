// ProgressBar: one line on a terminal.
#pragma once

#include <iosfwd>
#include <string>

namespace Steinberg {
namespace Vst {
namespace tools {

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

    /** @param done, all in the same unit; the bar is full when all is 0
        @param remark shown behind the bar */
    void show(double done, double all, const std::string& remark = {});
    /** Shows a text in place of the bar, for what has no known length. */
    void showText(std::string text);
    /** Takes the line away until the next show, so that other text can be printed. */
    void wipe();

    /** The line for a state: "[#####     ]  50 %  and a remark". */
    static std::string line(double done, double all, const std::string& remark = {});

private:
    std::ostream* stream;
    std::string shown;
};

} // namespace tools
} // namespace Vst
} // namespace Steinberg
