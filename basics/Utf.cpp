#include "basics/Utf.h"

#include <algorithm>
#include <optional>

namespace Steinberg {
namespace Vst {

namespace {

constexpr char32_t kReplacement = U'?';
constexpr size_t kString128Units = 128;

bool isAscii(char32_t unit)
{
    return unit < 0x80;
}

bool isHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/** Removes the first character from text, which must not be empty, and returns it. */
char32_t takeCharacter(std::u16string_view& text)
{
    const char32_t first = text[0];
    if (isHighSurrogate(first) && text.size() > 1 && isLowSurrogate(text[1])) {
        const char32_t second = text[1];
        text.remove_prefix(2);
        return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    }
    text.remove_prefix(1);
    return isHighSurrogate(first) || isLowSurrogate(first) ? kReplacement : first;
}

void append(std::string& result, char32_t character)
{
    const auto trail = [&](int shift) {
        result.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
    };
    if (character < 0x80) {
        result.push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        result.push_back(static_cast<char>(0xC0 | (character >> 6)));
        trail(0);
    } else if (character < 0x10000) {
        result.push_back(static_cast<char>(0xE0 | (character >> 12)));
        trail(6);
        trail(0);
    } else {
        result.push_back(static_cast<char>(0xF0 | (character >> 18)));
        trail(12);
        trail(6);
        trail(0);
    }
}

/** What the first byte of a character says about it. */
struct Form {
    size_t bytes;   ///< of the character; 0 when no character begins with this byte
    char32_t bits;  ///< the part of its value that is in the first byte
    char32_t least; ///< the least value that needs so many bytes; below it the form is overlong
};

Form formOf(unsigned char lead)
{
    if (lead < 0x80)
        return {1, lead, 0};
    if (lead >= 0xC0 && lead < 0xE0)
        return {2, lead & 0x1Fu, 0x80};
    if (lead >= 0xE0 && lead < 0xF0)
        return {3, lead & 0x0Fu, 0x800};
    if (lead >= 0xF0 && lead < 0xF8)
        return {4, lead & 0x07u, 0x10000};
    return {0, 0, 0};
}

/** Removes the first character from text, which must not be empty, and returns it. When the bytes
    are malformed, removes one byte and returns nothing. */
std::optional<char32_t> takeWellFormed(std::string_view& text)
{
    const Form form = formOf(static_cast<unsigned char>(text[0]));
    char32_t character = form.bits;
    bool wellFormed = form.bytes > 0 && form.bytes <= text.size();
    for (size_t i = 1; wellFormed && i < form.bytes; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        wellFormed = (byte & 0xC0) == 0x80;
        character = (character << 6) | (byte & 0x3Fu);
    }
    wellFormed = wellFormed && character >= form.least && character <= 0x10FFFF &&
                 !isHighSurrogate(character) && !isLowSurrogate(character);
    text.remove_prefix(wellFormed ? form.bytes : 1);
    return wellFormed ? std::optional(character) : std::nullopt;
}

char32_t takeCharacter(std::string_view& text)
{
    return takeWellFormed(text).value_or(kReplacement);
}

struct Units {
    char16 unit[2];
    size_t count;
};

Units toUnits(char32_t character)
{
    if (character < 0x10000)
        return {{static_cast<char16>(character), 0}, 1};
    const char32_t offset = character - 0x10000;
    return {{static_cast<char16>(0xD800 + (offset >> 10)),
             static_cast<char16>(0xDC00 + (offset & 0x3FF))},
            2};
}

} // namespace

std::string utf16ToUtf8(std::u16string_view text)
{
    // Most texts of a host are all ASCII, which needs no conversion.
    const auto rest = std::find_if_not(text.begin(), text.end(), isAscii);
    std::string result(text.begin(), rest);
    text.remove_prefix(result.size());
    while (!text.empty())
        append(result, takeCharacter(text));
    return result;
}

std::u16string utf8ToUtf16(std::string_view text)
{
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Units units = toUnits(takeCharacter(text));
        result.append(units.unit, units.count);
    }
    return result;
}

void utf8ToString128(std::string_view text, char16* buffer) noexcept
{
    // Most texts are ASCII, which needs no conversion.
    const size_t most = std::min(text.size(), kString128Units - 1);
    size_t used = 0;
    while (used < most && text[used] != 0 && isAscii(static_cast<unsigned char>(text[used]))) {
        buffer[used] = text[used];
        ++used;
    }
    text.remove_prefix(used);
    while (!text.empty() && text.front() != 0) {
        const Units units = toUnits(takeCharacter(text));
        if (used + units.count >= kString128Units)
            break;
        std::copy_n(units.unit, units.count, buffer + used);
        used += units.count;
    }
    buffer[used] = 0;
}

bool isUtf8(std::string_view text) noexcept
{
    while (!text.empty())
        if (!takeWellFormed(text))
            return false;
    return true;
}

size_t boundedLength(const char16* text, size_t size) noexcept
{
    return static_cast<size_t>(std::find(text, text + size, char16{0}) - text);
}

size_t boundedLength(const char8* text, size_t size) noexcept
{
    return static_cast<size_t>(std::find(text, text + size, char8{0}) - text);
}

} // namespace Vst
} // namespace Steinberg
