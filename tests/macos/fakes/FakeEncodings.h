// The encodings of the fake Core Foundation's texts, as the C library converts them. That Apple's
// converters agree with it in each character is a belief.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>

namespace doubles {

/** Nothing for bytes that are none of the encoding, and for an encoding that is not known. */
std::optional<std::u16string> decoded(const std::string& bytes, CFStringEncoding encoding);

/** A character that the encoding lacks becomes the loss byte; without one the text ends before it.
    A surrogate pair is one character. Nothing for an encoding that is not known. */
std::optional<std::string> encoded(const std::u16string& text, CFStringEncoding encoding,
                                   UInt8 lossByte);

} // namespace doubles
