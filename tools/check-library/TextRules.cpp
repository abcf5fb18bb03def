#include "tools/check-library/TextRules.h"

#include "basics/Utf.h"

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {
constexpr size_t kHostsText = 127; ///< UTF-16 units that a host's field of a text holds
}

std::string faultOf(const std::string& text)
{
    if (text.find('\0') != std::string::npos)
        return "holds a zero byte, which ends it for the host";
    const auto wide = utf8ToUtf16(text);
    if (utf16ToUtf8(wide) != text)
        return "is no UTF-8";
    if (wide.size() > kHostsText)
        return "is longer than the " + std::to_string(kHostsText) + " characters that hosts show";
    return {};
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
