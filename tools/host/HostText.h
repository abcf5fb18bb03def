// HostText: one text of the host, as a Unicode host and as an older host writes it.
//
//   port.displayName = "Tavrin 1";                      // UTF-8 here
//   port.displayName = HostText(nullptr);               // the host gives a null pointer
//   port.displayName = HostText::raw(u"\xD800");        // these units whatever the host
//   port.displayName = "M\xE4rz";                       // an older host's bytes, no UTF-8
//   context.versionText = std::string("4.30\0xyz", 8);  // a longer text stood there before
//   host without Unicode: the text's bytes in memory order, two in a 16-bit unit, and one zero byte
#pragma once

#include "base/source/fstring.h"

#include <string>
#include <vector>

namespace Steinberg::Vst::play {

/** Both forms are made once, so that pointers handed out live as long as this object is not
    assigned to. */
class HostText {
public:
    HostText()
    : HostText(std::string())
    {
    }
    HostText(const char* utf8); // NOLINT(google-explicit-constructor): reads as the text it is
    HostText(const std::string& utf8); // NOLINT(google-explicit-constructor)
    HostText(std::nullptr_t)           // NOLINT(google-explicit-constructor)
    : null(true)
    {
    }

    static HostText raw(const std::u16string& units);

    /** The text as the host hands it out; null for the null text. The memory ends with the
        terminator: a zero unit, or without Unicode one zero byte. */
    const char16* get(bool unicode) const;

    /** Writes as much as fits into a field of the plug-in's.
        @param[out] field room for *size units, at least 1 or nothing is written
        @param[in,out] size units of room, then units written without the terminator
        @param terminates false: a text as long as the field fills it without a terminator */
    void copyTo(char16* field, int32* size, bool unicode, bool terminates = true) const;

    /** Sets a string object, to wide text in a Unicode host, else to 8-bit text. */
    void copyTo(StringObject& out, bool unicode) const;

    /** What a Unicode host writes into a field, without the terminating zero unit. */
    std::u16string units() const;

    /** The text as 8-bit text, empty for the null text. */
    const std::string& utf8() const { return bytes; }

private:
    bool null = false;
    std::string bytes;
    std::vector<char16> wide;
    std::vector<char> packed; ///< with its terminator; on the heap, where a sanitizer sees its end
};

} // namespace Steinberg::Vst::play
