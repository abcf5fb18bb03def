// VSTGUI timers on the Core Foundation run loop of the thread that starts them.
#include "basics/CallGuard.h"
#include "platform/TimerPlatformFactory.h"
#include "platform/Timers.h"

#include "vstgui/lib/platform/mac/mactimer.h"

#include <memory>

namespace Steinberg {
namespace Vst {
namespace platform {

namespace {

class MacTimerFactory : public TimerPlatformFactory {
public:
    /** Null when memory ran out: VSTGUI's timer then never ticks. */
    VSTGUI::PlatformTimerPtr
    createTimer(VSTGUI::IPlatformTimerCallback* callback) const noexcept override
    {
        return guarded(VSTGUI::PlatformTimerPtr(),
                       [=] { return VSTGUI::makeOwned<VSTGUI::MacTimer>(callback); });
    }
};

} // namespace

void noteHostContext(FUnknown* /*context*/) {}

VSTGUI::PlatformFactoryPtr makeTimerPlatformFactory()
{
    return std::make_unique<MacTimerFactory>();
}

} // namespace platform
} // namespace Vst
} // namespace Steinberg
