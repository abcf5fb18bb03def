// GUI events in a host where they wait for the timer's tick.
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"

namespace bench::growth {

namespace {

using Steinberg::Vst::VstK2xController;

struct Waiting : LinkedScene {
    Waiting()
    : LinkedScene(false)
    {
    }

    void queue(int events)
    {
        for (int event = 0; event < events; ++event)
            instance.controller().notificationGuiEvent(VstK2xController::GuiEventValueChange,
                                                       37012000U + static_cast<ParamID>(event % 16),
                                                       (event % 101) / 100.0);
    }
    void tick() { instance.controller().notificationEvent(); }
};

double timeOfQueue(int events)
{
    Waiting waiting;
    return timeOf([&] { waiting.queue(events); }, [&] { waiting.tick(); });
}

double timeOfTick(int events)
{
    Waiting waiting;
    return timeOf([&] { waiting.tick(); }, [&] { waiting.queue(events); });
}

} // namespace

void addTickSeries()
{
    const auto add = [](const char* name, std::function<double(int)> measure) {
        addSeries({"GUI events", name, "events", Cost::seconds, steps(100, 10, 1'000'000),
                   std::move(measure)});
    };
    add("queued", timeOfQueue);
    add("told to the host by a tick", timeOfTick);
}

} // namespace bench::growth
