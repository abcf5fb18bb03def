// The run loop that play hands a plug-in on Linux.
#include "tools/host/RunLoop.h"
#include "tools/host/HostContext.h"

#include <gtest/gtest.h>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;

namespace {

/** A timer that counts its ticks and can end itself. */
class CountingTimer final : public U::Implements<U::Directly<Linux::ITimerHandler>> {
public:
    void PLUGIN_API onTimer() override
    {
        ++ticks;
        if (loop && ticks == endAfter)
            loop->unregisterTimer(this);
    }
    int ticks = 0;
    int endAfter = 0;
    RunLoop* loop = nullptr;
};

} // namespace

TEST(RunLoop, HostContextOffersIt)
{
    HostContext context(parseHostFamily("plain", true), owned(new RunLoop));
    EXPECT_TRUE(FUnknownPtr<Linux::IRunLoop>(&context));
}

TEST(RunLoop, AdvanceFiresOncePerPassedPeriod)
{
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    EXPECT_EQ(loop->registerTimer(&timer, 50), kResultOk);
    loop->advance(0.049);
    EXPECT_EQ(timer.ticks, 0);
    loop->advance(0.001);
    EXPECT_EQ(timer.ticks, 1);
    loop->advance(0.5);
    EXPECT_EQ(timer.ticks, 11);
    EXPECT_EQ(loop->ticks(), 11);
}

TEST(RunLoop, AdvanceLosesNoTicksInShortSteps)
{
    // 44,100 blocks of one sample are one second: 20 periods of 50 ms.
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    loop->registerTimer(&timer, 50);
    for (int i = 0; i < 44100; ++i)
        loop->advance(1.0 / 44100);
    EXPECT_EQ(timer.ticks, 20);
}

TEST(RunLoop, UnregisterTimerWorksFromInsideTheTimersTick)
{
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    timer.loop = loop;
    timer.endAfter = 2;
    loop->registerTimer(&timer, 10);
    loop->advance(1);
    EXPECT_EQ(timer.ticks, 2);
    EXPECT_NE(loop->unregisterTimer(&timer), kResultOk);
}

TEST(RunLoop, RegisterTimerRefusesNoHandlerAndNoPeriod)
{
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    EXPECT_NE(loop->registerTimer(nullptr, 50), kResultOk);
    EXPECT_NE(loop->registerTimer(&timer, 0), kResultOk);
    loop->advance(1);
    EXPECT_EQ(timer.ticks, 0);
}
