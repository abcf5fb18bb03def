#include "tools/host/HostText.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <algorithm>
#include <stdexcept>

namespace Steinberg::Vst::play {

namespace {

std::vector<char16> terminated(const std::u16string& units)
{
    std::vector<char16> result(units.begin(), units.end());
    result.push_back(0);
    return result;
}

/** Bytes that are no UTF-8 are an older host's own; each becomes a unit. */
std::u16string widened(const std::string& bytes)
{
    try {
        return VST3::StringConvert::convert(bytes);
    } catch (const std::range_error&) {
        std::u16string result;
        for (const char byte : bytes)
            result += static_cast<char16_t>(static_cast<unsigned char>(byte));
        return result;
    }
}

std::string bytesOf(const std::u16string& units)
{
    return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16)};
}

/** With the zero byte that ends 8-bit text, and nothing behind it. */
std::vector<char> packedBytes(const std::string& bytes)
{
    std::vector<char> result(bytes.size() + 1, 0);
    std::copy(bytes.begin(), bytes.end(), result.begin());
    return result;
}

} // namespace

HostText::HostText(const char* utf8)
: HostText(std::string(utf8 ? utf8 : ""))
{
    null = utf8 == nullptr;
}

HostText::HostText(const std::string& utf8)
: bytes(utf8)
, wide(terminated(widened(utf8)))
, packed(packedBytes(utf8))
{
}

HostText HostText::raw(const std::u16string& units)
{
    HostText result;
    result.wide = terminated(units);
    result.packed = packedBytes(bytesOf(units));
    for (const char16 unit : units)
        result.bytes += unit < 128 ? static_cast<char>(unit) : '?';
    return result;
}

const char16* HostText::get(bool unicode) const
{
    if (null)
        return nullptr;
    return unicode ? wide.data() : reinterpret_cast<const char16*>(packed.data());
}

void HostText::copyTo(char16* field, int32* size, bool unicode, bool terminates) const
{
    if (!field || !size || *size <= 0)
        return;
    const size_t terminator = unicode ? sizeof(char16) : sizeof(char8);
    const size_t stored = unicode ? wide.size() * sizeof(char16) : packed.size();
    const size_t text = stored > 0 ? stored - terminator : 0;
    const size_t room = static_cast<size_t>(*size) * sizeof(char16);
    const size_t length = std::min(text, terminates ? room - terminator : room);
    auto* bytesOut = reinterpret_cast<char8*>(field);
    if (length > 0)
        std::copy_n(reinterpret_cast<const char8*>(get(unicode)), length, bytesOut);
    std::fill_n(bytesOut + length, std::min(terminator, room - length), char8{0});
    *size = static_cast<int32>((length + 1) / sizeof(char16));
}

void HostText::copyTo(StringObject& out, bool unicode) const
{
    if (unicode)
        out.setText16(wide.data());
    else
        out.setText8(bytes.c_str());
}

std::u16string HostText::units() const
{
    return wide.empty() ? std::u16string() : std::u16string(wide.begin(), wide.end() - 1);
}

} // namespace Steinberg::Vst::play
