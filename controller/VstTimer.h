// VstTimer: the controller's regular tick.
#pragma once

#include "vstgui/lib/cvstguitimer.h"

namespace Steinberg {
namespace Vst {

class VstK2xController;

/** Calls the controller's notificationEvent at an interval, on the run loop of the thread that
    starts it. Reference counted by VSTGUI; the last reference stops it. [host main thread] */
class VstTimer : public VSTGUI::CBaseObject {
public:
    /** @param controller not owned; must outlive this, null ticks nothing
        @param interval milliseconds */
    VstTimer(VstK2xController* controller, int interval);
    ~VstTimer() noexcept override;
    VstTimer(const VstTimer&) = delete;
    VstTimer& operator=(const VstTimer&) = delete;

    void timerStart();
    void timerStop();

    /** The timer's message. Always 0, which means "not used up". */
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;

private:
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> timer;
    VstK2xController* tickedController;
};

} // namespace Vst
} // namespace Steinberg
