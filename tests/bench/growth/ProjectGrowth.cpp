// Whole projects as a host loads them, with the simulated editor library in its place.
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"

#include "public.sdk/source/common/memorystream.h"

#include <stdexcept>

namespace bench::growth {

namespace {

using namespace Steinberg;

using Project = std::vector<std::unique_ptr<LinkedInstance>>;

/** What the project holds of an instance. */
IPtr<MemoryStream> savedState(BenchHost& host)
{
    LinkedInstance instance(host);
    auto state = owned(new MemoryStream);
    instance.processor().getState(state);
    if (state->getSize() < 100)
        throw std::runtime_error("no state: is the simulator in its place (with-simulator)?");
    return state;
}

/** Creates every instance and gives it its state, in both of its components. */
void load(BenchHost& host, MemoryStream& state, Project& project)
{
    for (auto& instance : project) {
        instance = std::make_unique<LinkedInstance>(host);
        state.seek(0, IBStream::kIBSeekSet, nullptr);
        instance->processor().setState(&state);
        state.seek(0, IBStream::kIBSeekSet, nullptr);
        instance->controller().setComponentState(&state);
    }
}

void addProject(const char* name, Cost cost)
{
    addSeries({"projects", name, "instances", cost, {8, 64, 512}, [cost](int count) {
                   return inFreshProcess([&] {
                       BenchHost host;
                       warmUp(host);
                       const auto state = savedState(host);
                       Project project(static_cast<size_t>(count));
                       const double before = residentBytes();
                       const double seconds = timeOnce([&] { load(host, *state, project); });
                       return cost == Cost::seconds ? seconds : residentBytes() - before;
                   });
               }});
}

} // namespace

void addProjectSeries()
{
    addProject("load, with the simulator", Cost::seconds);
    addProject("memory, with the simulator", Cost::bytes);
}

} // namespace bench::growth
