// Utf: conversion between UTF-16 and UTF-8 that accepts any input and shares nothing.
//
// Why not the SDK's: on Linux its conversion throws on a lone surrogate or a malformed byte, and
// all threads share one converter object, while value texts are converted on the library's threads
// and on the host's. These functions give the same result on every platform, keep no state, and
// throw nothing but std::bad_alloc. [any thread]
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <string_view>

namespace Steinberg {
namespace Vst {

/** UTF-16 as UTF-8; each surrogate without its partner becomes one "?". Zero units are kept. */
std::string utf16ToUtf8(std::u16string_view text);

/** UTF-8 as UTF-16; each byte that is no part of a well-formed character becomes one "?".
    Overlong forms, encoded surrogates and values above U+10FFFF are not well-formed. Zero bytes are
    kept. */
std::u16string utf8ToUtf16(std::string_view text);

/** Converts as utf8ToUtf16 into a fixed buffer, up to the first zero byte. Allocates nothing,
    throws nothing.
    @param[out] buffer 128 units; always terminated, so at most 127 of them are text, and a
    character of two units that would not fit whole ends the text */
void utf8ToString128(std::string_view text, char16* buffer) noexcept;

/** Whether every byte is part of a well-formed character, as utf8ToUtf16 takes them. */
bool isUtf8(std::string_view text) noexcept;

/** Length of a text in a buffer of at most size units (bytes): up to its terminator or, when it has
    none, to the end of the buffer. Reads nothing behind either. */
size_t boundedLength(const char16* text, size_t size) noexcept;
size_t boundedLength(const char8* text, size_t size) noexcept;

} // namespace Vst
} // namespace Steinberg
