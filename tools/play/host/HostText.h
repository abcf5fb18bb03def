// HostText: a text of the host, in the form in which a host of its kind hands texts out.
#pragma once

#include "base/source/fstring.h"
#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** UTF-16 in a Unicode host, else 8-bit text packed into the 16-bit units. */
class HostText {
public:
    /** @param utf8Text valid UTF-8; a host without Unicode hands out these bytes */
    HostText(std::string utf8Text, bool isUnicode);

    const std::string& utf8() const { return bytes; }

    /** Zero-terminated; lives as long as this object. */
    const char16* get() const { return buffer.data(); }

    /** Writes as much as fits and always the terminator.
        @param[out] out room for *size units, at least 1 or nothing is written
        @param[in,out] size units of room, then units written without the terminator */
    void copyTo(char16* out, int32* size) const;

    /** Sets a string object, to wide text in a Unicode host, else to 8-bit text. */
    void copyTo(StringObject& out) const;

private:
    std::string bytes;
    bool unicode;
    std::vector<char16> buffer;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
