#include "tools/play/host/HostText.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

std::vector<char16> bufferOf(const std::string& utf8, bool unicode)
{
    if (unicode) {
        const auto wide = VST3::StringConvert::convert(utf8);
        std::vector<char16> buffer(wide.begin(), wide.end());
        buffer.push_back(0);
        return buffer;
    }
    // A whole zero unit at the end, also where the last character already shares its unit with one.
    std::vector<char16> buffer((utf8.size() + 1) / sizeof(char16) + 1, 0);
    std::memcpy(buffer.data(), utf8.data(), utf8.size());
    return buffer;
}

} // namespace

HostText::HostText(std::string utf8Text, bool isUnicode)
: bytes(std::move(utf8Text))
, unicode(isUnicode)
, buffer(bufferOf(bytes, unicode))
{
}

void HostText::copyTo(char16* out, int32* size) const
{
    if (!out || !size || *size <= 0)
        return;
    const auto length = std::min(buffer.size() - 1, static_cast<size_t>(*size) - 1);
    std::copy_n(buffer.begin(), length, out);
    out[length] = 0;
    *size = static_cast<int32>(length);
}

void HostText::copyTo(StringObject& out) const
{
    if (unicode)
        out.setText16(buffer.data());
    else
        out.setText8(bytes.c_str());
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
