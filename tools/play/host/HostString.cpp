#include "tools/play/host/HostString.h"

#include <algorithm>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

bool isHigh(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLow(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

void append(std::string& text, char32_t point)
{
    if (point < 0x80) {
        text += static_cast<char>(point);
    } else if (point < 0x800) {
        text += static_cast<char>(0xC0 | (point >> 6));
        text += static_cast<char>(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        text += static_cast<char>(0xE0 | (point >> 12));
        text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (point & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (point >> 18));
        text += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (point & 0x3F));
    }
}

} // namespace

std::string utf8(const String128& text)
{
    const auto* end = std::find(std::begin(text), std::end(text), 0);
    std::string result;
    for (const auto* unit = std::begin(text); unit != end; ++unit) {
        const char32_t first = *unit;
        const bool isPair = isHigh(first) && unit + 1 != end && isLow(*(unit + 1));
        if (isPair)
            append(result, 0x10000 + ((first - 0xD800) << 10) + (*++unit - 0xDC00));
        else
            append(result, isHigh(first) || isLow(first) ? U'?' : first);
    }
    return result;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
