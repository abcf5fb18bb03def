// The timer's tick.
#include "tests/bench/Instance.h"
#include "tests/bench/Lines.h"
#include "tests/bench/Table.h"

namespace bench {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr int kTicks = 500;
constexpr size_t kObservers = 225;

void idleTick(benchmark::State& state)
{
    LeanLibrary library;
    LeanHost host(library, true);
    Instance instance(host);
    std::vector<VstIObserver*> observers;
    for (size_t number = 0; number < kObservers; ++number)
        observers.push_back(unknown<VstIObserver>(library.nextObserver()));
    compare(state, kTicks, {[&] {
                for (int tick = 0; tick < kTicks; ++tick)
                    instance.controller().notificationEvent();
            }},
            {[&] {
                for (int tick = 0; tick < kTicks; ++tick)
                    for (VstIObserver* observer : observers)
                        observer->checkChange();
            }});
}

/** A knob that is turned and turned, in a host whose events wait for the tick. */
void queuedTick(benchmark::State& state, int events)
{
    LeanLibrary library;
    LeanHost host(library, false);
    Instance instance(host);
    VstK2xController& controller = instance.controller();
    const auto idOf = [](int event) { return 37012000u + static_cast<ParamID>(event % 16); };
    const auto valueOf = [](int event) { return (event % 101) / 100.0; };
    const auto queue = [&] {
        for (int event = 0; event < events; ++event)
            controller.notificationGuiEvent(VstK2xController::GuiEventValueChange, idOf(event),
                                            valueOf(event));
    };
    compare(state, events, {[&] { controller.notificationEvent(); }, queue}, {[&] {
                for (int event = 0; event < events; ++event) {
                    controller.EditController::setParamNormalized(idOf(event), valueOf(event));
                    controller.performEdit(idOf(event), valueOf(event));
                }
            }});
}

} // namespace

void addTickLines()
{
    addLine({"tick, 225 observers, nothing changed", "225 virtual calls", Unit::seconds, 1.1},
            idleTick);
    for (const int events : {1'000, 10'000, 100'000})
        addLine({"tick, " + std::to_string(events) + " queued events, each",
                 "the calls that an event stands for", Unit::seconds, 1.3},
                [events](benchmark::State& state) { queuedTick(state, events); });
}

} // namespace bench
