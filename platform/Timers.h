// Timers for VSTGUI's CVSTGUITimer, without the rest of VSTGUI's platform layer.
#pragma once

namespace Steinberg {

class FUnknown;

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

/** Tells the timers which context the SDK's factory has, after it took it; null before that, and
    for a context that it did not take. Linux: a timer then holds a reference to the run loop for as
    long as it runs. The factory alone gives its own back at exit, and the timer of an instance that
    is ended after that would call a run loop that may be gone. Elsewhere this does nothing.
    [host main thread; throws what the host throws] */
void noteHostContext(FUnknown* context);

} // namespace platform
} // namespace Vst
} // namespace Steinberg
