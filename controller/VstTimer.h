// VstTimer: calls the controller at regular intervals.
#pragma once

#include "vstgui/lib/cvstguitimer.h"

namespace Steinberg {
namespace Vst {

class VstK2xController;

/** Calls the controller's notificationEvent on the run loop of the thread that starts the timer.
    Reference counted by VSTGUI; stops when the last reference is released. [host main thread] */
class VstTimer : public VSTGUI::CBaseObject {
public:
    /** @param controller borrowed; must outlive this object; null: nothing is called
        @param interval in milliseconds */
    VstTimer(VstK2xController* controller, int interval);
    ~VstTimer() noexcept override;
    VstTimer(const VstTimer&) = delete;
    VstTimer& operator=(const VstTimer&) = delete;

    void timerStart();
    void timerStop();

    /** Called by VSTGUI at each tick. Always kMessageUnknown (0). */
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;

private:
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> timer;
    VstK2xController* tickedController;
};

} // namespace Vst
} // namespace Steinberg
