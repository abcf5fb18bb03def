#include "simulator/EditorObserver.h"

#include "basics/CallGuard.h"
#include "simulator/Instrument.h"
#include "simulator/NeverDestroyed.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

// Tells whether a pointer that comes from outside is an observer that still exists.
struct LiveObservers {
    std::mutex mutex;
    std::set<VstIObserver*> observers;
};

LiveObservers& liveObservers()
{
    return neverDestroyed<LiveObservers>();
}

} // namespace

struct EditorObserver::State {
    explicit State(const ObserverCallbacks& newCallbacks)
    : callbacks(newCallbacks)
    {
    }

    bool isAttached()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return instrument != nullptr;
    }

    template <typename Call>
    void raise(Call&& call)
    {
        if (isAttached())
            guarded(std::forward<Call>(call));
    }

    void raise(const Gesture& gesture)
    {
        if (gesture.held && callbacks.beginEdit)
            raise([&] { callbacks.beginEdit(callbacks.owner, callbacks.id); });
        for (const int32 value : gesture.values)
            if (callbacks.valueChanged)
                raise([&] { callbacks.valueChanged(callbacks.owner, callbacks.id, value); });
        if (gesture.held && callbacks.endEdit)
            raise([&] { callbacks.endEdit(callbacks.owner, callbacks.id); });
    }

    const ObserverCallbacks callbacks;
    std::mutex mutex; ///< guards the two below; never held during a callback
    std::shared_ptr<Instrument> instrument;
    std::vector<Gesture> waiting;
};

EditorObserver::EditorObserver(const ObserverCallbacks& callbacks)
: state(std::make_shared<State>(callbacks))
{
    auto& live = liveObservers();
    const std::lock_guard<std::mutex> guard(live.mutex);
    live.observers.insert(this);
}

EditorObserver::~EditorObserver()
{
    auto& live = liveObservers();
    const std::lock_guard<std::mutex> guard(live.mutex);
    live.observers.erase(this);
}

EditorObserver* EditorObserver::find(VstIObserver* observer)
{
    auto& live = liveObservers();
    const std::lock_guard<std::mutex> guard(live.mutex);
    return live.observers.count(observer) != 0 ? static_cast<EditorObserver*>(observer) : nullptr;
}

uint32 EditorObserver::id() const
{
    return state->callbacks.id;
}

bool EditorObserver::attach(std::shared_ptr<Instrument> instrument)
{
    const std::lock_guard<std::mutex> guard(state->mutex);
    if (state->instrument)
        return false;
    state->instrument = std::move(instrument);
    return true;
}

bool EditorObserver::detach(const Instrument& instrument)
{
    // Released after the lock, since it may be the last reference.
    std::shared_ptr<Instrument> released;
    const std::lock_guard<std::mutex> guard(state->mutex);
    if (state->instrument.get() != &instrument)
        return false;
    released.swap(state->instrument);
    state->waiting.clear();
    return true;
}

bool EditorObserver::add(const Gesture& gesture)
{
    const std::lock_guard<std::mutex> guard(state->mutex);
    if (!state->instrument)
        return true;
    if (state->waiting.size() >= capacity)
        return false;
    state->waiting.push_back(gesture);
    return true;
}

void EditorObserver::raise(State& observer, const Gesture& gesture)
{
    observer.raise(gesture);
}

void EditorObserver::destroy()
{
    std::shared_ptr<Instrument> instrument;
    {
        const std::lock_guard<std::mutex> guard(state->mutex);
        instrument = state->instrument;
    }
    if (instrument)
        instrument->removeObserver(this);
    delete this;
}

void EditorObserver::checkChange()
{
    const auto held = state; // a callback may destroy this object
    std::vector<Gesture> gestures;
    std::shared_ptr<Instrument> instrument;
    {
        const std::lock_guard<std::mutex> guard(held->mutex);
        gestures.swap(held->waiting);
        instrument = held->instrument;
    }
    if (instrument)
        instrument->passHostValueOn(held->callbacks.id);
    for (const auto& gesture : gestures)
        held->raise(gesture);
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
