// Reading the texts that the editor library gives about a voice.
#pragma once

#include <optional>
#include <string>

namespace Steinberg {
namespace Vst {

/** A zeroed buffer for the library to fill, with one more byte for the terminator of a text that
    fills it. */
class LibraryText {
public:
    static constexpr size_t kSize = 30;

    /** kSize bytes for the library to fill. */
    char* buffer() { return bytes; }
    std::string text() const { return bytes; }

private:
    char bytes[kSize + 1] = {};
};

/** The text after the last ":", or the whole text when there is none. [any thread] */
std::string voiceNameOf(const std::string& voiceData);

/** The decimal number before the first ":", or in the whole text when there is none. Blanks and a
    sign may come before the digits. Nothing when there is any other character or the number exceeds
    32 bits; 0 for an empty text. [any thread] */
std::optional<int> categoryCodeOf(const std::string& voiceData);

} // namespace Vst
} // namespace Steinberg
