// RoutingCheck: tells which of the host's tracks play through this plug-in.
#pragma once

#include "hostapi/IDeviceList.h"
#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/smartpointer.h"

#include <optional>
#include <string>

namespace Steinberg {

class IDevice;
class IValue;

namespace Vst {

class ControllerContext;

/** Lives for one operation, which may ask about thousands of tracks: what all of them need of the
    host is looked up once, when the first needs it. [the operation's thread] */
class RoutingCheck {
public:
    /** @param controller outlives this object
        @param useInstrumentRack how a newer host is asked: through its instrument rack, where an
        older one names the plug-in in the text of the track's output */
    RoutingCheck(const ControllerContext& controller, bool useInstrumentRack);
    RoutingCheck(const RoutingCheck&) = delete;
    RoutingCheck& operator=(const RoutingCheck&) = delete;

    /** Whether the track's MIDI goes to this plug-in.
        @param output the track's "output" value; what an older host is asked; may be null
        @param track what a newer host is asked; may be null */
    bool isRoutedHere(IValue* output, IDevice* track);

    /** Whether text occurs in the value's text; false for a null value. Of a longer text the value
        gives its first 256 units. */
    bool containsText(IValue* value, const std::string& text);

    /** Whether the host's texts are Unicode. */
    bool isUnicode();

private:
    /** What the text of an output to this plug-in contains. */
    const std::string& textOfOutputHere();
    IPtr<IValue> effectTypeOf(IDevice* track);
    IDevice* instrumentFolder();
    IDevice* findInstrumentFolder();

    const ControllerContext& context;
    const bool useInstrumentRack;
    std::string outputHere; ///< empty until it is asked for: not every operation needs memory
    std::optional<bool> unicode;
    IPtr<IDeviceList> deviceList; ///< held as long as the folder, which is borrowed
    std::optional<IDevice*> foundFolder;
};

} // namespace Vst
} // namespace Steinberg
