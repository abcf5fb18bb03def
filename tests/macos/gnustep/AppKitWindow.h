// AppKitWindow: a host's window in GNUstep's AppKit. A view in it passes wheel and key events to a
// plug-in's view, as hosts on a Mac do.
#pragma once

#include "pluginterfaces/gui/iplugview.h"

#include <functional>
#include <string>

namespace gnustep {

/** One at a time, on the main thread, where there is an X display. */
class AppKitWindow {
public:
    static constexpr const char* kTitle = "AppKitWindow";
    /** In pixels. The view is the left half of the window; the right half is empty. */
    static constexpr int kViewWidth = 200;
    static constexpr int kHeight = 200;

    /** Shows the window and attaches the plug-in's view to the view in it. */
    explicit AppKitWindow(Steinberg::IPlugView& view);
    ~AppKitWindow();
    AppKitWindow(const AppKitWindow&) = delete;
    AppKitWindow& operator=(const AppKitWindow&) = delete;

    /** Handles events until the condition holds; false when it does not within a minute. */
    bool handleUntil(const std::function<bool()>& condition);
    /** Handles the events that come within some seconds, and timers. */
    void handleFor(double seconds);
    /** Calls a function from a timer of the application's run loop. */
    void callFromTimer(std::function<void()> function);

    /** Whether it has the keyboard. */
    bool isKey() const;
    /** The characters of the keys that went down in the view, as AppKit gives them. */
    std::u16string typed() const;
    /** Scroll events that the application has dispatched, wherever they went. */
    int scrolls() const;
};

} // namespace gnustep
