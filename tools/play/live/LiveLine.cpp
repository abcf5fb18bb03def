#include "tools/play/live/LiveLine.h"

#include "tools/play/basics/Wording.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr std::chrono::milliseconds kPause{100};

std::string partsText(const std::bitset<16>& parts)
{
    if (parts.none())
        return "silent";
    std::string text = parts.count() == 1 ? "part" : "parts";
    for (size_t part = 0; part < parts.size(); ++part)
        if (parts[part])
            text += " " + std::to_string(part + 1);
    return text;
}

} // namespace

std::string LiveLine::line(double seconds, double all, const std::bitset<16>& parts,
                           const SimulatorControl::MidiPort& port)
{
    using State = SimulatorControl::MidiPort::State;
    auto text = (all > 0 ? minutesOf(seconds, all) : minutes(seconds)) + ", " + partsText(parts) +
                ", " + std::to_string(port.waiting) +
                (port.waiting == 1 ? " event on its way" : " events on their way");
    return port.state == State::open ? text : text + ", no port: " + port.reason;
}

void LiveLine::show(double seconds, double all, const std::bitset<16>& parts,
                    const SimulatorControl::MidiPort& port)
{
    const auto now = std::chrono::steady_clock::now();
    if (now < next)
        return;
    next = now + kPause;
    bar.showText(line(seconds, all, parts, port));
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
