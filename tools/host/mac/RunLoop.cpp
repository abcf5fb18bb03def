#include "tools/host/RunLoop.h"

#include <CoreFoundation/CoreFoundation.h>

namespace Steinberg {
namespace Vst {
namespace play {

void RunLoop::advance(double)
{
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0, false);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
