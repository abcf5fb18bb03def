#include "platform/TimerPlatformFactory.h"
#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/fakes/FakeMemory.h"
#include "tests/unit/BoundController.h"

#include <thread>

using namespace doubles;
using namespace Steinberg::Vst;

namespace {

class MacTimerTest : public testing::Test {
protected:
    MacTimerTest() { FakeCoreFoundation::reset(); }
    ~MacTimerTest() override
    {
        EXPECT_EQ(FakeCoreFoundation::liveObjects(), 0u);
        EXPECT_EQ(FakeCoreFoundation::misuses(), 0u);
    }

    // Changes of its editor wait for the timer.
    BoundController bound{BoundController::nameless()};
};

TEST_F(MacTimerTest, TicksEvery50MillisecondsFromInitializeToTerminate)
{
    EXPECT_EQ(FakeCoreFoundation::timers(), 0u);
    bound.initialize();
    EXPECT_EQ(FakeCoreFoundation::timers(), 1u);
    EXPECT_NEAR(FakeCoreFoundation::lastInterval, 0.05, 1e-6);
    EXPECT_NEAR(FakeCoreFoundation::lastDelay, 0.05, 1e-6);
    EXPECT_NEAR(FakeCoreFoundation::lastTolerance, 0.005, 1e-6) << "a tenth of the interval";
    bound.end();
    EXPECT_EQ(FakeCoreFoundation::timers(), 0u);
    EXPECT_EQ(FakeCoreFoundation::liveObjects(), 0u);
}

TEST_F(MacTimerTest, ATickPassesTheEditorsChangesOn)
{
    bound.initialize();
    bound.library.turn(kVolume1, 1);
    EXPECT_EQ(bound.trace.count("host.performEdit"), 0u);
    bound.trace.clear();
    FakeCoreFoundation::fireTimers();
    EXPECT_THAT(bound.edits(), testing::Contains("host.performEdit(37012000, 0.25)"));
    bound.end();
}

TEST_F(MacTimerTest, TicksOnTheThreadThatInitialized)
{
    bound.initialize();
    bound.library.turn(kVolume1, 1);
    bound.trace.clear();
    std::thread([] { FakeCoreFoundation::fireTimers(); }).join();
    EXPECT_THAT(bound.edits(), testing::IsEmpty());
    FakeCoreFoundation::fireTimers();
    EXPECT_THAT(bound.edits(), testing::Not(testing::IsEmpty()));
    bound.end();
}

TEST_F(MacTimerTest, NeedsNoRunLoopOfTheHost)
{
    bound.initialize();
    EXPECT_THAT(bound.host.runLoop.intervals(), testing::IsEmpty());
    bound.end();
}

class NobodyTicks : public VSTGUI::IPlatformTimerCallback {
public:
    void fire() override {}
};

/** VSTGUI asks for timers where nothing may be thrown. */
TEST(MacTimerFactory, GivesNoTimerWhereMemoryRanOutForIt)
{
    FakeCoreFoundation::reset();
    NobodyTicks listener;
    const auto factory = platform::makeTimerPlatformFactory();
    FakeMemory::failsNext = true;
    EXPECT_EQ(factory->createTimer(&listener), nullptr);
    EXPECT_FALSE(FakeMemory::failsNext) << "no memory was asked for";
    EXPECT_NE(factory->createTimer(&listener), nullptr);
}

} // namespace
