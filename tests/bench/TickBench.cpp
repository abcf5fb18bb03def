// The timer's tick.
#include "tests/bench/LinkedInstance.h"
#include "tests/bench/Table.h"
#include "tests/doubles/Parameters.h"

#include "base/thread/include/flock.h"

#include <deque>
#include <utility>

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using Base::Thread::FGuard;
using Base::Thread::FLock;

constexpr int kTicks = 500;

/** Value changes that wait. The host is called while the lock is held. */
class BareQueue {
public:
    void push(ParamID id, ParamValue value)
    {
        const FGuard guard(lock);
        events.push_back({id, value});
    }

    void deliverTo(VstK2xController& controller)
    {
        for (;;) {
            const FGuard guard(lock);
            if (events.empty())
                return;
            const auto [id, value] = events.front();
            controller.EditController::setParamNormalized(id, value);
            controller.performEdit(id, value);
            events.pop_front();
        }
    }

private:
    FLock lock;
    std::deque<std::pair<ParamID, ParamValue>> events;
};

void idleTick(benchmark::State& state)
{
    LinkedScene scene;
    std::vector<VstIObserver*> observers;
    for (int number = 0; number < doubles::kParameters; ++number)
        observers.push_back(unknown<VstIObserver>(scene.library.nextObserver()));
    BareQueue none;
    compare(state, kTicks, {[&] {
                for (int tick = 0; tick < kTicks; ++tick)
                    scene.instance.controller().notificationEvent();
            }},
            {[&] {
                for (int tick = 0; tick < kTicks; ++tick) {
                    for (VstIObserver* observer : observers)
                        observer->checkChange();
                    none.deliverTo(scene.instance.controller());
                }
            }});
}

/** A knob that is turned and turned, in a host whose events wait for the tick. */
void queuedTick(benchmark::State& state, int events)
{
    LinkedScene scene(false);
    VstK2xController& controller = scene.instance.controller();
    const auto idOf = [](int event) { return 37012000u + static_cast<ParamID>(event % 16); };
    const auto valueOf = [](int event) { return (event % 101) / 100.0; };
    const auto queue = [&] {
        for (int event = 0; event < events; ++event)
            controller.notificationGuiEvent(VstK2xController::GuiEventValueChange, idOf(event),
                                            valueOf(event));
    };
    BareQueue bare;
    const auto queueBare = [&] {
        for (int event = 0; event < events; ++event)
            bare.push(idOf(event), valueOf(event));
    };
    compare(state, events, {[&] { controller.notificationEvent(); }, queue},
            {[&] { bare.deliverTo(controller); }, queueBare});
}

} // namespace

void addTickLines()
{
    addLine({"tick, all observers, nothing changed", "their calls, a look into the queue",
             Unit::seconds, 1.1},
            idleTick);
    for (const int events : {1'000, 10'000, 100'000})
        addLine({"tick, " + std::to_string(events) + " queued events, each",
                 "one lock, the event's calls, pop", Unit::seconds, 1.2},
                [events](benchmark::State& state) { queuedTick(state, events); });
}

} // namespace bench
