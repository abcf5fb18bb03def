#include "tools/play/page/Packed.h"

namespace Steinberg {
namespace Vst {
namespace play {

void Packed::add(int64 number)
{
    auto rest = static_cast<uint64>(number);
    while (rest >= 0x80) {
        bytes.push_back(static_cast<uint8>(0x80U | (rest & 0x7FU)));
        rest >>= 7U;
    }
    bytes.push_back(static_cast<uint8>(rest));
}

void Packed::addSigned(int64 number)
{
    add(number < 0 ? -2 * number - 1 : 2 * number);
}

std::string Packed::text() const
{
    constexpr const char* digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        const auto byteAt = [&](size_t at) { return at < bytes.size() ? uint32{bytes[at]} : 0U; };
        const auto three = byteAt(i) << 16U | byteAt(i + 1) << 8U | byteAt(i + 2);
        text += digits[three >> 18U];
        text += digits[three >> 12U & 0x3FU];
        text += i + 1 < bytes.size() ? digits[three >> 6U & 0x3FU] : '=';
        text += i + 2 < bytes.size() ? digits[three & 0x3FU] : '=';
    }
    return text;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
