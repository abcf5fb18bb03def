// HostText: one text of the host, as a Unicode host and as an older host writes it.
//
//   port.displayName = "Tavrin 1";                      // UTF-8 here
//   port.displayName = HostText(nullptr);               // the host gives a null pointer
//   port.displayName = HostText::raw(u"\xD800");        // these units whatever the host
//   port.displayName = "M\xE4rz";                       // an older host's bytes, no UTF-8
//   host without Unicode: the text's bytes, two in each 16-bit unit, in memory order
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <vector>

namespace doubles {

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

    /** The text as the host hands it out, with its terminator and nothing behind it; null for the
        null text. */
    const Steinberg::char16* get(bool unicode) const;

    /** The same units without the terminating zero unit. */
    std::u16string units(bool unicode) const;

    /** The text as 8-bit text, empty for the null text. */
    const std::string& utf8() const { return bytes; }
    bool isNull() const { return null; }

private:
    bool null = false;
    std::string bytes;
    std::vector<Steinberg::char16> wide;
    std::vector<Steinberg::char16> packed;
};

} // namespace doubles
