// Text encodings for the fake Core Foundation, converted by the C library. That Apple converts each
// character alike is a belief.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>

namespace doubles {

/** Nothing for bytes that are not valid in the encoding, and for an unknown encoding. */
std::optional<std::u16string> decoded(const std::string& bytes, CFStringEncoding encoding);

/** A character that the encoding lacks becomes the loss byte; if that is 0 the text ends before the
    character. A surrogate pair is one character. Nothing for an unknown encoding. */
std::optional<std::string> encoded(const std::u16string& text, CFStringEncoding encoding,
                                   UInt8 lossByte);

} // namespace doubles
