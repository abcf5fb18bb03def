// FakeMemory: lets one operator new of the test program fail, as when the Mac has no memory left.
#pragma once

namespace doubles {

struct FakeMemory {
    /** The calling thread's next operator new throws std::bad_alloc; those after it do not. */
    static inline thread_local bool failsNext = false;
};

} // namespace doubles
