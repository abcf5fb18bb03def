#include "simulator/InstanceList.h"

#include <algorithm>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

struct InstanceList::Instance {
    explicit Instance(InstanceList& list)
    : instrument(std::make_shared<Instrument>())
    , editor(instrument, [this, &list] { list.end(this); })
    , user(instrument, editor)
    {
    }

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
    auto instance = std::make_unique<Instance>(*this);
    const std::lock_guard<std::mutex> guard(mutex);
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
    instances.erase(found);
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
