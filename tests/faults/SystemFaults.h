// SystemFaults: the plug-in's own calls to the system, one of which fails: an operator new (no
// memory), a calloc, or a file call. Only calls that the plug-in's code makes are counted and only
// they fail; the doubles and the test program get what they ask for.
//
//   SystemFaults::failMemoryAt(3);  act();  SystemFaults::clear();
//   SystemFaults::memoryCalls() // how many there were since
#pragma once

#include <cstddef>

namespace faults {

/** This thread's calls; one fault at a time. */
struct SystemFaults {
    /** The n-th allocation from now on fails; 0: none, but they are counted from now on. */
    static void failMemoryAt(size_t n);
    /** The n-th file call from now on fails with "no space left"; 0: none, but they are counted. */
    static void failFilesAt(size_t n);
    static void clear();

    static size_t memoryCalls();
    static size_t fileCalls();

    /** Objects of the whole process that were made with operator new and are not deleted. */
    static long liveObjects();
};

} // namespace faults
