// What the application is just handling, for the wheel's sake.
#pragma once

namespace Steinberg {
namespace Vst {
namespace platform {

/** Whether the event that the application is handling now is a scroll event. macOS: asks
    NSApplication and the Carbon Event Manager. Elsewhere there is no such event: false.
    [host main thread] */
bool isCurrentEventScroll();

} // namespace platform
} // namespace Vst
} // namespace Steinberg
