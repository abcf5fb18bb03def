// A File Manager for Linux, on the real file system. It obeys a folder's write permission even when
// the tests run as root.
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
    /** Names with the same key are the same file, as on a volume that ignores case. Without this
        function names are compared byte by byte. */
    static inline std::function<std::string(const std::string& name)> keyOf;
    /** Called once, before a folder is made: acts as another program that is quicker. */
    static inline std::function<void()> beforeCreation;
};

} // namespace doubles
