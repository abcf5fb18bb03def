// Patience: waiting for what other threads and programs do.
#pragma once

#include <chrono>
#include <thread>

namespace live {

/** Waits until the condition holds, longer than a loaded machine needs. @return whether it does */
template <typename Condition>
bool waitFor(Condition&& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace live
