#include "tests/doubles/HostText.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <cstring>
#include <stdexcept>

namespace doubles {
namespace {

using Steinberg::char16;

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

/** A zero unit ends the 16-bit buffer, also when the 8-bit terminator shares a unit with the last
    character. */
std::vector<char16> packedBytes(const std::string& bytes)
{
    std::vector<char16> result((bytes.size() + 1) / sizeof(char16) + 1, 0);
    std::memcpy(result.data(), bytes.data(), bytes.size());
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
    result.packed = result.wide;
    for (const char16 unit : units)
        result.bytes += unit < 128 ? static_cast<char>(unit) : '?';
    return result;
}

const char16* HostText::get(bool unicode) const
{
    if (null)
        return nullptr;
    return unicode ? wide.data() : packed.data();
}

std::u16string HostText::units(bool unicode) const
{
    const auto& buffer = unicode ? wide : packed;
    return buffer.empty() ? std::u16string() : std::u16string(buffer.begin(), buffer.end() - 1);
}

} // namespace doubles
