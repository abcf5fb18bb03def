// LibraryFile: the editor library's file, looked at without loading it.
#pragma once

#include "tools/check-library/Finding.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

struct LibraryFile {
    enum class Place {
        missing,
        deadLink,
        folder,
        device, ///< anything else that is no file
        locked, ///< the system does not let us look or read
        file,
    };
    enum class Format {
        none, ///< no dynamic library that this program knows
        elf,
        machO,
    };

    std::string path;
    Place place = Place::missing;
    std::string reason;                ///< the system's, where it is locked
    std::string firstMissing;          ///< the topmost folder that is not there, or the file itself
    std::vector<std::string> likeness; ///< names in its folder that look like another version
    Format format = Format::none;
    std::vector<std::string> machines; ///< "x86_64", "arm64": what its code runs on
    std::uintmax_t size = 0;           ///< bytes
    bool quarantined = false;
};

LibraryFile lookAt(const std::string& path);

/** What kind of file begins with these bytes, and for which machines it is. */
void readHeader(const std::string& bytes, LibraryFile& file);

/** What was seen of the file, for people. Bad unless this program could load it. */
Finding findingOf(const LibraryFile& file);

/** What this program was compiled for. */
const char* ownMachine();
LibraryFile::Format ownFormat();

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
