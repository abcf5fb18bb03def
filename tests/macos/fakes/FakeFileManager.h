// A File Manager for Linux, on the real file system. It honours a folder's write permission also
// where the tests run as root.
#pragma once

#include <cstddef>
#include <functional>

namespace doubles {

class FakeFileManager {
public:
    static void reset();

    /** Folders that were made. */
    static inline size_t created = 0;
    /** Called before a folder is made, once: somebody else who is quicker. */
    static inline std::function<void()> beforeCreation;
};

} // namespace doubles
