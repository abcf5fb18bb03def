#include "tests/doubles/CallText.h"

#include <array>
#include <charconv>

namespace doubles {

std::string numberText(double value)
{
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

std::string bytesText(const void* data, size_t size)
{
    if (!data)
        return "null";
    constexpr const char* digits = "0123456789ABCDEF";
    std::string result;
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (size_t i = 0; i < size; ++i) {
        if (i > 0)
            result += ' ';
        result += digits[bytes[i] >> 4];
        result += digits[bytes[i] & 15];
    }
    return result;
}

} // namespace doubles
