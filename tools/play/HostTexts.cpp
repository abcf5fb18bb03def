#include "tools/play/HostTexts.h"

#include <cstring>

namespace Steinberg {
namespace Vst {
namespace play {

HostTexts::HostTexts(const HostFamily& family)
: isUnicode(family.isUnicode)
, name(bufferOf(family.name))
, version(bufferOf(family.version))
{
}

HostTexts::Buffer HostTexts::bufferOf(const std::string& asciiText) const
{
    // One unit more than packed text needs, so that a zero unit ends it in either form.
    Buffer buffer(asciiText.size() + 2, 0);
    if (isUnicode)
        std::copy(asciiText.begin(), asciiText.end(), buffer.begin());
    else
        std::memcpy(buffer.data(), asciiText.data(), asciiText.size());
    return buffer;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
