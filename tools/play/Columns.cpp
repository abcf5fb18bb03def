#include "tools/play/Columns.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

std::string padded(const std::string& text, size_t width)
{
    const auto characters = static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
    return text + std::string(width > characters ? width - characters : 0, ' ');
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
