#include "tools/play/live/LiveLine.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;

namespace {

SimulatorControl::MidiPort openPort(Steinberg::uint32 waiting)
{
    SimulatorControl::MidiPort port;
    port.state = SimulatorControl::MidiPort::State::open;
    port.waiting = waiting;
    return port;
}

} // namespace

TEST(LiveLine, LineShowsTheTimeThePartsThatSoundAndTheEventsThatWait)
{
    EXPECT_EQ(LiveLine::line(12, 246, std::bitset<16>(0b1000000011), openPort(3)),
              "0:12 of 4:06, parts 1 2 10, 3 events on their way");
    EXPECT_EQ(LiveLine::line(12, 246, std::bitset<16>(0b10), openPort(1)),
              "0:12 of 4:06, part 2, 1 event on its way");
    EXPECT_EQ(LiveLine::line(12, 246, {}, openPort(0)),
              "0:12 of 4:06, silent, 0 events on their way");
}

TEST(LiveLine, LineShowsNoLengthWithoutASong)
{
    EXPECT_EQ(LiveLine::line(72, 0, {}, openPort(0)), "1:12, silent, 0 events on their way");
}

TEST(LiveLine, LineSaysWhenThePortIsGone)
{
    auto port = openPort(0);
    port.state = SimulatorControl::MidiPort::State::away;
    port.reason = "it is gone";
    EXPECT_EQ(LiveLine::line(0, 60, {}, port),
              "0:00 of 1:00, silent, 0 events on their way, no port: it is gone");
}

TEST(LiveLine, ShowWritesAtMostTenTimesASecond)
{
    std::ostringstream terminal;
    LiveLine line(&terminal);
    line.show(1, 60, {}, openPort(0));
    const auto once = terminal.str();
    EXPECT_NE(once, "");
    line.show(1, 60, std::bitset<16>(1), openPort(0));
    EXPECT_EQ(terminal.str(), once) << "at once again";
}
