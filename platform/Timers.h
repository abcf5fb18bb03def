// Timers for VSTGUI's CVSTGUITimer, without the rest of VSTGUI's platform layer.
#pragma once

namespace Steinberg {
namespace Vst {
namespace platform {

/** Gives VSTGUI a platform factory that makes timers and nothing else, once per process; later
   calls do nothing. CVSTGUITimer must not be started before.

    VSTGUI's own factories bring drawing with them (cairo and X11 on Linux), which this plug-in
   never uses and for which a host that scans the module would pay.

    macOS: timers fire on the run loop of the thread that starts them. Linux: on the run loop that
    the host handed to the factory (IPluginFactory3::setHostContext); a host without one gives no
    ticks. [host main thread] */
void installTimers();

} // namespace platform
} // namespace Vst
} // namespace Steinberg
