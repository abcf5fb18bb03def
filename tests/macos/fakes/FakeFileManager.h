// A File Manager for Linux, on the real file system. It honours a folder's write permission also
// where the tests run as root.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace doubles {

class FakeFileManager {
public:
    static void reset();

    /** Folders that were made. */
    static inline size_t created = 0;
    /** Names with the same key are one file's on the volume, as on one that does not tell capital
        letters from small ones. Without it every two names are told apart. */
    static inline std::function<std::string(const std::string& name)> keyOf;
    /** Called before a folder is made, once: somebody else who is quicker. */
    static inline std::function<void()> beforeCreation;
};

} // namespace doubles
