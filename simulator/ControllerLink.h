// ControllerLink: by it the simulated library calls its controller.
#pragma once

#include "basics/CallGuard.h"
#include "editorlib/VstIControllerInterface.h"

#include <mutex>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Makes the calls one at a time, under a lock. What the controller may ask the library meanwhile
    does not take this lock, so the controller can hold locks of its own when it asks. [any thread
    but the audio thread] */
class ControllerLink {
public:
    /** Waits for a call that is under way on another thread. After this the former controller is
        not called any more. @param newController null for none */
    void set(VstIControllerInterface* newController)
    {
        const std::lock_guard<std::recursive_mutex> guard(mutex);
        controller = newController;
    }

    /** Calls call with the controller, a VstIControllerInterface&.
        @return its result; fallback when there is no controller or the call threw */
    template <typename Result, typename Call>
    Result ask(Result fallback, Call&& call)
    {
        const std::lock_guard<std::recursive_mutex> guard(mutex);
        if (!controller)
            return fallback;
        return guarded(fallback, [&] { return std::forward<Call>(call)(*controller); });
    }

    /** The same for a call without a result. @return whether there is a controller */
    template <typename Call>
    bool tell(Call&& call)
    {
        return ask(false, [&](VstIControllerInterface& present) {
            guarded([&] { std::forward<Call>(call)(present); });
            return true;
        });
    }

private:
    std::recursive_mutex mutex; ///< recursive, because the controller may call back from inside
    VstIControllerInterface* controller = nullptr;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
