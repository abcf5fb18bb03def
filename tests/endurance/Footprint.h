// Footprint: what the process holds of the system's memory, handles and threads.
#pragma once

#include <cstddef>
#include <string>

namespace endurance {

struct Footprint {
    std::size_t heapBytes = 0;     ///< handed out by the allocator
    std::size_t residentBytes = 0; ///< of the whole process; 0 under an emulator
    std::size_t handles = 0;       ///< open files and the like
    std::size_t threads = 0;

    /** As it is now, after the allocator gave back what it can. */
    static Footprint take();

    std::string text() const;
};

/** Whether nothing grew by more than the allocator's own noise. Says on stderr what did.
    @param heapSlack, residentSlack bytes that may come on top */
bool isFlat(const Footprint& before, const Footprint& after, std::size_t heapSlack,
            std::size_t residentSlack);

} // namespace endurance
