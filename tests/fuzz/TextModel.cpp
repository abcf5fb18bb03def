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

/** The character that so many bytes at index write, if they are exactly what it is written as. */
uint32_t writtenAs(const std::string& bytes, size_t index, size_t count)
{
    constexpr uint32_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    const auto byteAt = [&](size_t at) { return static_cast<uint8_t>(bytes[at]); };
    if (count > bytes.size() - index)
        return kLone;
    uint32_t character = byteAt(index) & kLeadBits[count];
    for (size_t at = index + 1; at < index + count; ++at)
        character = character * 64 + (byteAt(at) & 0x3F);
    std::string written;
    append(written, character);
    const bool isOne = character < 0xD800 || (character > 0xDFFF && character < 0x110000);
    return isOne && bytes.compare(index, count, written) == 0 ? character : kLone;
}

void appendUnits(std::u16string& out, uint32_t character)
{
    if (character < 0x10000) {
        out.push_back(static_cast<char16_t>(character));
        return;
    }
    out.push_back(static_cast<char16_t>(0xD800 + (character - 0x10000) / 0x400));
    out.push_back(static_cast<char16_t>(0xDC00 + (character - 0x10000) % 0x400));
}

} // namespace

std::u16string utf16Of(const std::string& bytes)
{
    std::u16string result;
    for (size_t index = 0; index < bytes.size() && bytes[index] != 0;) {
        size_t count = 1;
        uint32_t character = kLone;
        for (; count <= 4 && character == kLone; ++count)
            character = writtenAs(bytes, index, count);
        index += character == kLone ? 1 : count - 1;
        appendUnits(result, character == kLone ? U'?' : character);
    }
    return result;
}

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
