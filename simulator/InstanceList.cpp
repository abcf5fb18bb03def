#include "simulator/InstanceList.h"

#include "simulator/InstrumentReport.h"
#include "simulator/NeverDestroyed.h"

#include <algorithm>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace simulator {

struct InstanceList::Instance {
    Instance(InstanceList& list, int newNumber)
    : number(newNumber)
    , instrument(std::make_shared<Instrument>())
    , editor(instrument, [this, &list] { list.end(this); })
    , user(instrument, editor)
    {
    }

    const int number;
    std::shared_ptr<Instrument> instrument;
    SimulatedLibrary editor;
    SimulatedUser user;
};

InstanceList& InstanceList::get()
{
    return neverDestroyed<InstanceList>();
}

void InstanceList::drop()
{
    const std::lock_guard<std::mutex> guard(mutex);
    instances.clear();
}

VstIEditorConnect* InstanceList::create()
{
    const std::lock_guard<std::mutex> guard(mutex);
    Instance& instance = instances.emplace_back(*this, ++created);
    InstrumentReport::begin(created);
    return &instance.editor;
}

SimulatorControl* InstanceList::control(int index)
{
    const std::lock_guard<std::mutex> guard(mutex);
    const auto count = static_cast<int>(instances.size());
    const int place = index == -1 ? count - 1 : index;
    return place >= 0 && place < count ? &std::next(instances.begin(), place)->user : nullptr;
}

void InstanceList::end(const Instance* ended)
{
    std::list<Instance> last; // deleted outside the lock
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found = std::find_if(instances.begin(), instances.end(),
                                    [ended](const auto& instance) { return &instance == ended; });
    if (found == instances.end())
        return;
    InstrumentReport::end(found->number, found->user);
    last.splice(last.begin(), instances, found);
}

namespace {

// Runs when the library is unloaded; at exit after all static destructors of a host.
[[gnu::destructor]] void dropWhatNobodyEnded()
{
    InstanceList::get().drop();
}

} // namespace

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
