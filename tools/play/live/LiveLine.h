// LiveLine: the line on the terminal while music leaves in real time.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/common/ProgressBar.h"

#include <bitset>
#include <chrono>

namespace Steinberg {
namespace Vst {
namespace play {

class LiveLine {
public:
    /** @param terminal borrowed; null shows nothing */
    explicit LiveLine(std::ostream* terminal)
    : bar(terminal)
    {
    }

    /** Shows the state, ten times a second at most.
        @param seconds, all of the song; all is 0 without one
        @param parts those of which a note sounds */
    void show(double seconds, double all, const std::bitset<16>& parts,
              const SimulatorControl::MidiPort& port);

    /** "0:12 of 4:06, parts 1 2 10, 3 events on their way". */
    static std::string line(double seconds, double all, const std::bitset<16>& parts,
                            const SimulatorControl::MidiPort& port);

private:
    tools::ProgressBar bar;
    std::chrono::steady_clock::time_point next = std::chrono::steady_clock::now();
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
