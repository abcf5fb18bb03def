// ConstantData: ends the program with a word when somebody writes what a loaded image has as
// constant data or as code. A Mac ends it, too, and a plain fault would not say whose data it was.
#pragma once

#include <cstddef>

namespace macho {

/** Watches an image for as long as it lives. One at a time. */
class ConstantData {
public:
    ConstantData(const void* image, size_t size);
    ~ConstantData();
    ConstantData(const ConstantData&) = delete;
    ConstantData& operator=(const ConstantData&) = delete;
};

} // namespace macho
