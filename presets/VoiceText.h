// Texts that the editor library gives about a voice.
#pragma once

#include <optional>
#include <string>

namespace Steinberg {
namespace Vst {

/** A buffer of the library's fixed size, zeroed beforehand. A text that fills it has no
    terminator of its own. */
class LibraryText {
public:
    static constexpr size_t kSize = 30;

    /** kSize bytes for the library to fill. */
    char* buffer() { return bytes; }
    std::string text() const { return bytes; }

private:
    char bytes[kSize + 1] = {};
};

/** What follows the last ":", or all when there is none. [any thread] */
std::string voiceNameOf(const std::string& voiceData);

/** The decimal number before the first ":", or of all when there is none. Nothing when anything
    but blanks and a sign before the digits stands there too, or when it exceeds 32 bits; 0 for no
    text at all. [any thread] */
std::optional<int> categoryCodeOf(const std::string& voiceData);

} // namespace Vst
} // namespace Steinberg
