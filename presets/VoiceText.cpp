#include "presets/VoiceText.h"

#include <cerrno>
#include <cstdlib>
#include <limits>

namespace Steinberg {
namespace Vst {

std::string voiceNameOf(const std::string& voiceData)
{
    const auto colon = voiceData.rfind(':');
    return colon == std::string::npos ? voiceData : voiceData.substr(colon + 1);
}

std::optional<int> categoryCodeOf(const std::string& voiceData)
{
    const auto field = voiceData.substr(0, voiceData.find(':'));
    char* end = nullptr;
    errno = 0;
    const long code = std::strtol(field.c_str(), &end, 10);
    // This also refuses a field with a zero byte in it, where strtol stops.
    if (end != field.c_str() + field.size() || errno == ERANGE)
        return std::nullopt;
    if (code < std::numeric_limits<int>::min() || code > std::numeric_limits<int>::max())
        return std::nullopt;
    return static_cast<int>(code);
}

} // namespace Vst
} // namespace Steinberg
