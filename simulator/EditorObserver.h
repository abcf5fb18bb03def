// EditorObserver: the simulated library's watch on one parameter, for one controller.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "pluginterfaces/base/ftypes.h"

#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

class Instrument;

/** What a user did to one parameter from taking hold of the knob to letting go. Without a hand on
    the knob (held false) the values are reported without begin and end. */
struct Gesture {
    std::vector<int32> values;
    bool held = true;
};

/** The plug-in's side of an observer, as the entry point received it. Any callback may be null. */
struct ObserverCallbacks {
    void* owner = nullptr;
    uint32 id = 0;
    void (*valueChanged)(void*, unsigned, int) = nullptr;
    void (*beginEdit)(void*, unsigned) = nullptr;
    void (*endEdit)(void*, unsigned) = nullptr;
};

/** Collects gestures from any thread and raises the callbacks on the thread that calls checkChange.
    Nothing is raised once it was detached or destroyed, even by a callback on the way. */
class EditorObserver final : public ReservedSlots<VstIObserver> {
public:
    struct State;

    static constexpr size_t capacity = 1000; ///< gestures that can wait

    explicit EditorObserver(const ObserverCallbacks& callbacks);
    EditorObserver(const EditorObserver&) = delete;
    EditorObserver& operator=(const EditorObserver&) = delete;

    /** The observer behind a pointer from outside; null unless it is one of ours that lives. */
    static EditorObserver* find(VstIObserver* observer);

    uint32 id() const;
    /** Gestures are collected for this instrument from now on. @return false if there is one
     * already
     */
    bool attach(std::shared_ptr<Instrument> instrument);
    /** No longer. @return false unless it was this instrument's */
    bool detach(const Instrument& instrument);
    /** @return false when the capacity is used up; gestures nobody collects for are dropped */
    bool add(const Gesture& gesture);

    /** What raise needs of an observer, which may end meanwhile. */
    std::shared_ptr<State> shared() const { return state; }
    /** Raises a gesture at once, on the calling thread, if the observer is attached. */
    static void raise(State& observer, const Gesture& gesture);

    void destroy() override;
    void checkChange() override;

private:
    ~EditorObserver();

    std::shared_ptr<State> state; ///< also held by a checkChange under way
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
