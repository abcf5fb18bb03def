#include "platform/SystemText.h"

#include "base/source/fstring.h"

namespace Steinberg {
namespace Vst {

std::string toSystemCodePage(const char16* text, size_t length)
{
    String converted(text, static_cast<int32>(length), false);
    if (!converted.toMultiByte(kCP_Default))
        return {};
    return converted.text8();
}

} // namespace Vst
} // namespace Steinberg
