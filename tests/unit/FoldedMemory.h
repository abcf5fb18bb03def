// FoldedMemory: gigabytes of memory for a test that does not care what is in them.
//
//   const FoldedMemory folded;
//   std::vector<char> bytes(size_t(1) << 31);     // takes two megabytes of the machine's
#pragma once

#include "tests/doubles/Sanitized.h"

#ifndef VSTK2X_SANITIZED

namespace unit {

/** While one lives, each block of a gigabyte and more that operator new gives shows the same two
    megabytes over and over. Not where a sanitizer has an operator new of its own. */
class FoldedMemory {
public:
    FoldedMemory();
    ~FoldedMemory();
    FoldedMemory(const FoldedMemory&) = delete;
    FoldedMemory& operator=(const FoldedMemory&) = delete;
};

} // namespace unit

#endif
