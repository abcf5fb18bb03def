#include "tools/play/page/Packed.h"

#include <glib.h>
#include <memory>

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
    const std::unique_ptr<gchar, void (*)(gpointer)> text(
        g_base64_encode(bytes.data(), bytes.size()), g_free);
    return text.get();
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
