#include "platform/CurrentEvent.h"

namespace Steinberg {
namespace Vst {
namespace platform {

bool isCurrentEventScroll()
{
    return false;
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
