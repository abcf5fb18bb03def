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

    /** @param done, all in any one unit; with nothing to do it is all done
        @param remark shown behind the bar */
    void show(double done, double all, const std::string& remark = {});
    /** The line for what has no end to be measured by. */
    void showText(std::string text);
    /** Takes the line away until the next show, for a text of somebody else's. */
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
