#include "tests/doubles/HostText.h"

#include "public.sdk/source/vst/utility/stringconvert.h"

#include <algorithm>
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

std::u16string HostText::units() const
{
    return wide.empty() ? std::u16string() : std::u16string(wide.begin(), wide.end() - 1);
}

std::string HostText::fieldBytes(bool unicode) const
{
    if (!unicode)
        return packed.empty() ? std::string() : std::string(packed.begin(), packed.end() - 1);
    return bytesOf(units());
}

} // namespace doubles
