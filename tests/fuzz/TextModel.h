// The texts that must come out of a conversion, worked out here without the code under test.
#pragma once

#include <string>

namespace fuzz {

/** UTF-8 of the text up to its first zero unit; each surrogate without its partner gives "?". */
std::string utf8Of(const std::u16string& text);

/** UTF-16 of the bytes up to the first zero; each byte that begins no well-formed character gives
    "?". */
std::u16string utf16Of(const std::string& bytes);

/** ASCII as it is, every other character one "?". */
std::string asciiOf(const std::u16string& text);

/** Only A to Z change. */
std::string lowerCaseOf(std::string text);

} // namespace fuzz
