#include "controller/ParameterText.h"

#include "basics/Utf.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

namespace Steinberg {
namespace Vst {

namespace {

constexpr size_t kMaxBytes = 255;

constexpr int kParsed = 0;
constexpr int kNotParsed = 1;

/** The first 255 bytes of the text as UTF-8. Each unit gives at least one byte, so no more than 255
    units are needed. */
std::string toBytes(const char16* text)
{
    if (!text)
        return {};
    std::string bytes = utf16ToUtf8({text, boundedLength(text, kMaxBytes)});
    bytes.resize(std::min(bytes.size(), kMaxBytes));
    return bytes;
}

/** The number at the start of the text, clamped to the range of int. */
int leadingNumber(const char* text)
{
    const long number = std::strtol(text, nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

bool startsWithLetter(const std::string& text, char lowerCase)
{
    return (text[0] | 0x20) == lowerCase;
}

} // namespace

int parsePlusMinusValue(const char16* text, int& value)
{
    const std::string bytes = toBytes(text);
    if (bytes.empty())
        return kNotParsed;
    const size_t digits = bytes[0] == '+' || bytes[0] == '-' ? 1 : 0;
    const auto isBelowZero = [](signed char byte) { return byte < '0'; };
    if (std::any_of(bytes.begin() + static_cast<std::ptrdiff_t>(digits), bytes.end(), isBelowZero))
        return kNotParsed;
    value = leadingNumber(bytes.c_str());
    return kParsed;
}

int parseLRPanValue(const char16* text, int& value)
{
    const std::string bytes = toBytes(text);
    if (bytes.empty())
        return kNotParsed;
    if (bytes == "C" || bytes == "c") {
        value = 0;
        return kParsed;
    }
    const bool left = startsWithLetter(bytes, 'l');
    if (bytes.size() < 2 || (!left && !startsWithLetter(bytes, 'r')))
        return kNotParsed;
    const char* rest = bytes.c_str() + 1;
    const int number = isNumber(rest) == 0 ? leadingNumber(rest) : 0;
    if (number == 0)
        return kNotParsed;
    value = left ? -number : number;
    return kParsed;
}

int isNumber(const char* text)
{
    if (!text || !*text)
        return 1;
    for (; *text; ++text)
        if (static_cast<signed char>(*text) <= 47)
            return 1;
    return 0;
}

} // namespace Vst
} // namespace Steinberg
