// Footprint: what the process holds of the system's memory, handles and threads.
#pragma once

#include <cstddef>
#include <string>

namespace endurance {

struct Footprint {
    std::size_t heapBytes = 0;     ///< handed out by the allocator
    std::size_t residentBytes = 0; ///< in memory, whatever for; 0 under an emulator
    std::size_t handles = 0;       ///< open files and the like
    std::size_t threads = 0;

    /** As it is now, after the allocator gave back what it can. */
    static Footprint take();

    std::string text() const;
};

/** Whether nothing grew from one to the other but by the allocator's own noise; if something did, a
    line on stderr says what.
    @param heapSlack, residentSlack bytes that may come on top */
bool isFlat(const Footprint& before, const Footprint& after, std::size_t heapSlack,
            std::size_t residentSlack);

} // namespace endurance
