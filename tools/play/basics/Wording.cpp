#include "tools/play/basics/Wording.h"

#include "basics/Utf.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace play {

std::string hostText(const String128& field)
{
    return utf16ToUtf8({field, boundedLength(field, std::size(field))});
}

std::string padded(const std::string& text, size_t width)
{
    const auto characters = static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
    return text + std::string(width > characters ? width - characters : 0, ' ');
}

std::string inQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string minutes(double seconds)
{
    const auto whole = static_cast<long long>(seconds);
    char text[32];
    std::snprintf(text, sizeof(text), "%lld:%02lld", whole / 60, whole % 60);
    return text;
}

std::string minutesOf(double done, double all)
{
    return minutes(std::min(done, all)) + " of " + minutes(all);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
