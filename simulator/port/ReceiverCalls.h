// ReceiverCalls: lets other threads wait until a call of the receiver is over.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Makes the calls of one receiver, and counts them. */
class ReceiverCalls {
public:
    /** Makes a call, with no lock held. [always the same thread] */
    template <typename Call>
    void make(Call&& call)
    {
        {
            const std::lock_guard<std::mutex> guard(mutex);
            caller = std::this_thread::get_id();
            ++begun;
        }
        std::forward<Call>(call)();
        {
            const std::lock_guard<std::mutex> guard(mutex);
            ++ended;
        }
        end.notify_all();
    }

    /** Returns when the call that is under way is over; at once on the thread that makes the calls.
        [any thread] */
    void wait()
    {
        std::unique_lock<std::mutex> guard(mutex);
        if (caller == std::this_thread::get_id())
            return;
        end.wait(guard, [this, last = begun] { return ended >= last; });
    }

private:
    std::mutex mutex;
    std::condition_variable end;
    std::thread::id caller;
    uint64 begun = 0;
    uint64 ended = 0;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
