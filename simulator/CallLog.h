// CallLog: the calls that reached one instance, as text.
#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Keeps the newest entries. [any thread but the audio thread, since it allocates and locks] */
class CallLog {
public:
    static constexpr size_t capacity = 10000;

    void add(std::string text)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        if (calls.size() >= capacity)
            calls.pop_front();
        calls.push_back(std::move(text));
    }

    /** Oldest first. */
    std::vector<std::string> texts()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return {calls.begin(), calls.end()};
    }

private:
    std::mutex mutex;
    std::deque<std::string> calls;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
