// EditorObserver: the simulated library's observer of one parameter, for one controller.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "pluginterfaces/base/ftypes.h"

#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

class Instrument;

/** A series of values that a user gives one parameter. With held it is reported between begin and
    end of an edit, as for a knob that is held; without held the values are reported alone. */
struct Gesture {
    std::vector<int32> values;
    bool held = true;
};

/** The plug-in's callbacks, as the entry point received them. Each may be null. */
struct ObserverCallbacks {
    void* owner = nullptr;
    uint32 id = 0;
    void (*valueChanged)(void*, unsigned, int) = nullptr;
    void (*beginEdit)(void*, unsigned) = nullptr;
    void (*endEdit)(void*, unsigned) = nullptr;
};

/** Collects gestures from any thread, and calls the callbacks on the thread that calls checkChange.
    Calls none once it is detached or destroyed, even when a callback does that. */
class EditorObserver final : public ReservedSlots<VstIObserver> {
public:
    struct State;

    static constexpr size_t capacity = 1000; ///< gestures that can wait

    explicit EditorObserver(const ObserverCallbacks& callbacks);
    EditorObserver(const EditorObserver&) = delete;
    EditorObserver& operator=(const EditorObserver&) = delete;

    /** The observer at a pointer that comes from outside; null when it is not one of this library
        or does not exist any more. */
    static EditorObserver* find(VstIObserver* observer);

    uint32 id() const;
    /** Collects gestures for this instrument from now on.
        @return false when it does so for an instrument already */
    bool attach(std::shared_ptr<Instrument> instrument);
    /** Stops collecting. @return false when it was not attached to this instrument */
    bool detach(const Instrument& instrument);
    /** Collects a gesture; ignores it when it is not attached. @return false when it is full */
    bool add(const Gesture& gesture);

    /** What raise needs of an observer, which may be destroyed meanwhile. */
    std::shared_ptr<State> shared() const { return state; }
    /** Calls the callbacks for a gesture at once, on the calling thread, if the observer
        is attached. */
    static void raise(State& observer, const Gesture& gesture);

    void destroy() override;
    void checkChange() override;

private:
    ~EditorObserver();

    std::shared_ptr<State> state; ///< checkChange holds it too while it runs
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
