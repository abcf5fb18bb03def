// How exceptions get through a Mach-O image's functions. macOS unwinds by the compact table in
// __unwind_info; Linux unwinds by DWARF frames. This reads the one and writes the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace macho {

/** Offsets are from the image's beginning. */
struct UnwindEntry {
    uint32_t begin; ///< of the function, or of several that are unwound alike
    uint32_t end;
    uint32_t encoding;     ///< 0: nothing can be unwound through it
    uint32_t languageData; ///< which exceptions are caught where; 0: none
    uint32_t personality;  ///< where the pointer to the function that reads it stands; 0: none
};

/** The entries of a section __unwind_info, in the order of their functions. Throws LoadError. */
std::vector<UnwindEntry> readUnwindInfo(const uint8_t* section, size_t size);

/** A section .eh_frame with absolute addresses for an image that is mapped at the address, with
    its pointers in place. Throws LoadError for an entry of an unknown kind. */
std::vector<uint8_t> framesOf(const std::vector<UnwindEntry>& entries, const uint8_t* image);

} // namespace macho
