#include "tests/fuzz/TextModel.h"

#include <cstdint>

namespace fuzz {

namespace {

bool isHigh(char16_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}

bool isLow(char16_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

constexpr uint32_t kLone = 0xFFFFFFFF;

/** The character at index, which moves behind it. */
uint32_t characterAt(const std::u16string& text, size_t& index)
{
    const char16_t unit = text[index++];
    if (!isHigh(unit) && !isLow(unit))
        return unit;
    if (isLow(unit) || index == text.size() || !isLow(text[index]))
        return kLone;
    const uint32_t high = unit - 0xD800u;
    const uint32_t low = text[index++] - 0xDC00u;
    return 0x10000 + high * 0x400 + low;
}

void append(std::string& out, uint32_t character)
{
    const auto trail = [&](int shift) {
        out.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
    };
    if (character == kLone) {
        out.push_back('?');
    } else if (character < 0x80) {
        out.push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (character >> 6)));
        trail(0);
    } else if (character < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (character >> 12)));
        trail(6);
        trail(0);
    } else {
        out.push_back(static_cast<char>(0xF0 | (character >> 18)));
        trail(12);
        trail(6);
        trail(0);
    }
}

} // namespace

std::string utf8Of(const std::u16string& text)
{
    std::string result;
    for (size_t index = 0; index < text.size() && text[index] != 0;)
        append(result, characterAt(text, index));
    return result;
}

std::string asciiOf(const std::u16string& text)
{
    std::string result;
    for (size_t index = 0; index < text.size() && text[index] != 0;) {
        const uint32_t character = characterAt(text, index);
        result.push_back(character < 0x80 ? static_cast<char>(character) : '?');
    }
    return result;
}

std::string lowerCaseOf(std::string text)
{
    for (char& byte : text)
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte + 32);
    return text;
}

} // namespace fuzz
