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
    /** The n-th allocation from now on fails, and with all those after it too; 0: none, but they
        are counted. One of more than kMostMemory always fails. */
    static void failMemory(size_t n, bool all = false);
    static constexpr size_t kMostMemory = size_t{1} << 28;

    /** The n-th file call from now on fails with "no space left"; with all, those after it too,
        unless they only look at what is there. */
    static void failFiles(size_t n, bool all = false);
    static void clear();

    /** Whether any allocation or file call did, since. */
    static bool hasFailed();

    static size_t memoryCalls();
    static size_t fileCalls();
    /** The function that failed first, such as "mkdir"; empty when none did. */
    static const char* failedFileCall();

    /** Objects of the whole process that were made with operator new and are not deleted. Of a
        Mac's code it is not known, and 0. */
    static long liveObjects();
};

} // namespace faults
