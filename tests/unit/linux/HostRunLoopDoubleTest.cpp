#include "tests/doubles/ScriptedHost.h"

#include <functional>
#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::ScriptedHost;
using doubles::Trace;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Handler final : public Linux::ITimerHandler {
public:
    std::function<void()> onTick;
    int references = 1;
    void PLUGIN_API onTimer() override { onTick(); }
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return static_cast<uint32>(++references); }
    uint32 PLUGIN_API release() override { return static_cast<uint32>(--references); }
    virtual ~Handler() = default;
};

} // namespace

TEST(HostRunLoopDouble, TicksWhatIsRegisteredAtTheMoment)
{
    Trace trace;
    ScriptedHost host(trace);
    Handler first;
    Handler second;
    int ticks = 0;
    first.onTick = [&] {
        ++ticks;
        host.runLoop.unregisterTimer(&second);
    };
    second.onTick = [&] { ++ticks; };
    host.runLoop.registerTimer(&first, 50);
    host.runLoop.registerTimer(&second, 100);
    EXPECT_THAT(host.runLoop.intervals(), ElementsAre(50u, 100u));
    host.runLoop.tick();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(second.references, 1);
    EXPECT_THAT(host.ledger(), ElementsAre("timers: expected 0, is 1"));
    host.runLoop.unregisterTimer(&first);
    EXPECT_THAT(host.ledger(), IsEmpty());
    EXPECT_EQ(host.runLoop.unregisterTimer(&first), kResultFalse);
}
