// Timers for VSTGUI's CVSTGUITimer, without the rest of VSTGUI's platform layer.
#pragma once

namespace Steinberg {

class FUnknown;

namespace Vst {
namespace platform {

/** Gives VSTGUI a platform factory that makes timers and nothing else. Later calls in the same
    process do nothing. Call it before a CVSTGUITimer is started.

    VSTGUI's own factories need drawing libraries (cairo and X11 on Linux), which this plug-in never
    uses: every host that only scans the module would load them.

    macOS: timers fire on the run loop of the thread that starts them. Linux: on the run loop that
    the host handed to the factory (IPluginFactory3::setHostContext); in a host without one they
    never fire. [host main thread] */
void installTimers();

/** Tells the timers which context the SDK's factory took from the host.
    @param context null when it took none

    Linux: each timer then holds a reference to the context's run loop while it runs. The factory's
    own reference would not do: it is released at exit, and the timer of an instance that the host
    ends later would call a run loop that may be gone. Elsewhere this does nothing.
    [host main thread; throws what the host throws] */
void noteHostContext(FUnknown* context);

} // namespace platform
} // namespace Vst
} // namespace Steinberg
