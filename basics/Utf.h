// Utf: conversion between UTF-16 and UTF-8 for any input, on any thread.
//
// The SDK's own conversion does not serve: on Linux it throws on a lone surrogate or a malformed
// byte, and all threads share one converter object, while value texts are converted on the host's
// and on the library's threads. These functions keep no state, give the same result on every
// platform, and throw nothing but std::bad_alloc. [any thread]
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <string_view>

namespace Steinberg {
namespace Vst {

/** Converts UTF-16 to UTF-8; a surrogate without its partner becomes one "?". Zero units stay. */
std::string utf16ToUtf8(std::u16string_view text);

/** Converts UTF-8 to UTF-16; each byte that is not part of a well-formed character becomes one
    "?". Overlong forms, encoded surrogates and values above U+10FFFF are not well-formed. Zero
    bytes stay. */
std::u16string utf8ToUtf16(std::string_view text);

/** Converts as utf8ToUtf16 into a fixed buffer, up to the first zero byte. Allocates nothing,
    throws nothing.
    @param[out] buffer 128 units, always terminated: at most 127 units of text. The text ends before
    a character of which only one of its two units would fit */
void utf8ToString128(std::string_view text, char16* buffer) noexcept;

/** Whether every byte is part of a character that utf8ToUtf16 takes for well-formed. */
bool isUtf8(std::string_view text) noexcept;

/** Length of a text in a buffer of size units (char16) or bytes (char8): up to its terminator, or
    the whole buffer when there is none. Reads nothing after either. */
size_t boundedLength(const char16* text, size_t size) noexcept;
size_t boundedLength(const char8* text, size_t size) noexcept;

} // namespace Vst
} // namespace Steinberg
