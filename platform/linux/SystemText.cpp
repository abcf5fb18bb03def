#include "platform/SystemText.h"

namespace Steinberg {
namespace Vst {

std::string toSystemCodePage(const char16* text, size_t length)
{
    const auto isSurrogate = [](char16 unit, char16 first) { return (unit & 0xFC00) == first; };
    std::string result;
    result.reserve(length);
    for (size_t i = 0; i < length; ++i) {
        result.push_back(text[i] < 0x80 ? static_cast<char>(text[i]) : '?');
        const bool isPair =
            isSurrogate(text[i], 0xD800) && i + 1 < length && isSurrogate(text[i + 1], 0xDC00);
        if (isPair)
            ++i;
    }
    return result;
}

} // namespace Vst
} // namespace Steinberg
