// Patience: waiting for other threads and programs.
#pragma once

#include <chrono>
#include <thread>

namespace live {

/** How long a test waits before it fails: longer than a loaded machine needs. */
constexpr std::chrono::seconds patience{30};
/** How long to wait for the JACK server's turn: longer than another program uses it. */
constexpr std::chrono::seconds turnPatience{420};

/** Waits until the condition holds. @return whether it does */
template <typename Condition>
bool waitFor(Condition&& condition, std::chrono::seconds longest = patience)
{
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace live
