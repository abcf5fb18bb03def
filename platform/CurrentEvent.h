// Whether the application is handling a scroll event. The view's wheel needs to know.
#pragma once

namespace Steinberg {
namespace Vst {
namespace platform {

/** Whether the event that the application is handling now is a scroll event. macOS: asks
    NSApplication and the Carbon Event Manager. Elsewhere always false. [host main thread] */
bool isCurrentEventScroll();

} // namespace platform
} // namespace Vst
} // namespace Steinberg
