// SystemText: text in the system's own 8-bit encoding.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <string>

namespace Steinberg {
namespace Vst {

/** Converts length units of UTF-16, none of them zero, to the system's default 8-bit encoding;
    each character that the encoding lacks becomes one "?". Empty when the system cannot convert.
    Throws only std::bad_alloc. [any thread]

    macOS: the default encoding. Linux: ASCII, since what a locale makes of other bytes differs from
    machine to machine; a surrogate pair is one character. */
std::string toSystemCodePage(const char16* text, size_t length);

} // namespace Vst
} // namespace Steinberg
