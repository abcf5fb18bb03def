#include "controller/VstTimer.h"

#include "controller/VstK2xController.h"
#include "platform/Timers.h"

namespace Steinberg {
namespace Vst {

namespace {

/** VSTGUI's usual period in milliseconds, until setFireTime sets ours. */
constexpr uint32_t kInitialFireTime = 100;

} // namespace

VstTimer::VstTimer(VstK2xController* controller, int interval)
: tickedController(controller)
{
    platform::installTimers();
    timer = VSTGUI::makeOwned<VSTGUI::CVSTGUITimer>(this, kInitialFireTime);
    timer->setFireTime(static_cast<uint32_t>(interval));
}

VstTimer::~VstTimer() noexcept
{
    timerStop();
}

void VstTimer::timerStart()
{
    if (timer) // untaken: made-with-object
        timer->start();
}

void VstTimer::timerStop()
{
    if (timer) // untaken: made-with-object
        timer->stop();
}

VSTGUI::CMessageResult VstTimer::notify(VSTGUI::CBaseObject* /*sender*/,
                                        VSTGUI::IdStringPtr message)
{
    if (message == VSTGUI::CVSTGUITimer::kMsgTimer && tickedController)
        tickedController->notificationEvent();
    return VSTGUI::kMessageUnknown;
}

} // namespace Vst
} // namespace Steinberg
