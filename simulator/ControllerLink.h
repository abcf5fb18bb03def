// ControllerLink: the simulated library's way to its controller.
#pragma once

#include "basics/CallGuard.h"
#include "editorlib/VstIControllerInterface.h"

#include <mutex>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Calls come one at a time. No library query that the controller makes on the way takes this lock,
    so that the controller may hold locks of its own when it asks. [any thread but the audio thread]
 */
class ControllerLink {
public:
    /** Waits for a call under way on another thread: afterwards the old controller is not used. */
    void set(VstIControllerInterface* newController)
    {
        const std::lock_guard<std::recursive_mutex> guard(mutex);
        controller = newController;
    }

    /** What call (taking VstIControllerInterface&) gives; fallback without a controller, or when it
        threw. */
    template <typename Result, typename Call>
    Result ask(Result fallback, Call&& call)
    {
        const std::lock_guard<std::recursive_mutex> guard(mutex);
        if (!controller)
            return fallback;
        return guarded(fallback, [&] { return std::forward<Call>(call)(*controller); });
    }

    /** The same for a call without result. @return whether there was a controller to call */
    template <typename Call>
    bool tell(Call&& call)
    {
        return ask(false, [&](VstIControllerInterface& present) {
            guarded([&] { std::forward<Call>(call)(present); });
            return true;
        });
    }

private:
    std::recursive_mutex mutex; ///< recursive: the controller's answer may lead back to a call here
    VstIControllerInterface* controller = nullptr;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
