// Trace: one record of every call that crossed a boundary of the plug-in, in order.
#pragma once

#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace doubles {

/** Shared by the scripted host and the scripted library, so that their calls stand in one order.
    [any thread] */
class Trace {
public:
    struct Call {
        std::string text; ///< "object.operation(arguments)", as the double wrote it
        std::thread::id thread;
    };

    void add(std::string text)
    {
        const std::lock_guard<std::mutex> guard(mutex);
        calls.push_back({std::move(text), std::this_thread::get_id()});
    }

    /** All texts so far, oldest first. */
    std::vector<std::string> texts() const
    {
        const std::lock_guard<std::mutex> guard(mutex);
        std::vector<std::string> result;
        result.reserve(calls.size());
        for (const auto& call : calls)
            result.push_back(call.text);
        return result;
    }

    /** The texts that begin with one of the prefixes, oldest first. */
    std::vector<std::string> textsOf(const std::vector<std::string>& prefixes) const
    {
        const std::lock_guard<std::mutex> guard(mutex);
        std::vector<std::string> result;
        for (const auto& call : calls)
            for (const auto& prefix : prefixes)
                if (call.text.compare(0, prefix.size(), prefix) == 0) {
                    result.push_back(call.text);
                    break;
                }
        return result;
    }

    /** How many calls have exactly this text. */
    size_t count(const std::string& text) const
    {
        const std::lock_guard<std::mutex> guard(mutex);
        size_t result = 0;
        for (const auto& call : calls)
            result += call.text == text ? 1 : 0;
        return result;
    }

    std::vector<Call> all() const
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return calls;
    }

    /** All calls so far, which the trace then forgets: none is in neither or in both. */
    std::vector<Call> take()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        return std::exchange(calls, {});
    }

    void clear()
    {
        const std::lock_guard<std::mutex> guard(mutex);
        calls.clear();
    }

private:
    mutable std::mutex mutex;
    std::vector<Call> calls;
};

} // namespace doubles
