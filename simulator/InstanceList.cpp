#include "simulator/InstanceList.h"

#include "simulator/InstrumentReport.h"

#include <algorithm>
#include <utility>

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
    EditorLibrary editor;
    SimulatedUser user;
};

InstanceList::InstanceList() = default;

InstanceList::~InstanceList() = default;

InstanceList& InstanceList::get()
{
    static InstanceList instance;
    return instance;
}

VstIEditorConnect* InstanceList::create()
{
    const std::lock_guard<std::mutex> guard(mutex);
    auto instance = std::make_unique<Instance>(*this, ++created);
    InstrumentReport::begin(created);
    instances.push_back(std::move(instance));
    return &instances.back()->editor;
}

SimulatorControl* InstanceList::control(int index)
{
    const std::lock_guard<std::mutex> guard(mutex);
    const auto count = static_cast<int>(instances.size());
    const int place = index == -1 ? count - 1 : index;
    return place >= 0 && place < count ? &instances[static_cast<size_t>(place)]->user : nullptr;
}

void InstanceList::end(const Instance* ended)
{
    std::unique_ptr<Instance> last; // deleted outside the lock
    const std::lock_guard<std::mutex> guard(mutex);
    const auto found =
        std::find_if(instances.begin(), instances.end(),
                     [ended](const auto& instance) { return instance.get() == ended; });
    if (found == instances.end())
        return;
    last = std::move(*found);
    InstrumentReport::end(last->number, last->user);
    instances.erase(found);
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
