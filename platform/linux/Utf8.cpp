#include "platform/linux/Utf8.h"

#include <cstdint>

namespace Steinberg {
namespace Vst {
namespace platform {
namespace {

/** How many bytes the sequence has that the byte begins; 0 for one that begins none. */
size_t sequenceLength(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first < 0xE0)
        return 2;
    if (first >= 0xE0 && first < 0xF0)
        return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

/** The code point of length bytes, or -1 when one of them continues nothing. */
int32_t decode(const char* bytes, size_t length)
{
    if (length == 1)
        return static_cast<unsigned char>(bytes[0]);
    int32_t value = static_cast<unsigned char>(bytes[0]) & (0x7F >> length);
    for (size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0) != 0x80)
            return -1;
        value = value * 64 + (byte & 0x3F);
    }
    return value;
}

bool isInForm(int32_t value, size_t length)
{
    constexpr int32_t lowest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    return value >= lowest[length] && value <= 0x10FFFF && !surrogate;
}

} // namespace

bool isUtf8(const std::string& text) noexcept
{
    for (size_t at = 0; at < text.size();) {
        const auto length = sequenceLength(static_cast<unsigned char>(text[at]));
        if (length == 0 || length > text.size() - at)
            return false;
        if (!isInForm(decode(text.data() + at, length), length))
            return false;
        at += length;
    }
    return true;
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
