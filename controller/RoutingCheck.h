// RoutingCheck: tells which of the host's tracks play through this plug-in.
#pragma once

#include "hostapi/IConnector.h"
#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/smartpointer.h"

#include <optional>
#include <string>
#include <vector>

namespace Steinberg {

class IValue;

namespace Vst {

struct HostAndLibrary;

/** Lives for one operation, which may ask about thousands of tracks: what all of them need of the
    host is looked up once, when the first needs it, and each instrument of the rack costs one call
    a track. A rack that has grown or shrunk since the last track is walked anew.
    [the operation's thread] */
class RoutingCheck {
public:
    /** @param hostAndLibrary outlives this object
        @param useInstrumentRack how a newer host is asked: through its instrument rack, where an
        older one names the plug-in in the text of the track's output */
    RoutingCheck(const HostAndLibrary& hostAndLibrary, bool useInstrumentRack);
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
    /** Held, since the host may let go of both in any call. */
    struct Instrument {
        IPtr<IDevice> device;
        IPtr<IConnector> connector; ///< of its first output
    };

    IPtr<IValue> effectTypeOf(IDevice* track);
    void forgetChangedRack(IDevice& rack);
    bool walkOn(IDevice& rack);
    IDevice* instrumentFolder();
    IDevice* findInstrumentFolder();

    const HostAndLibrary& outside;
    const bool useInstrumentRack;
    std::string outputHere; ///< empty until it is asked for: not every operation needs memory
    std::optional<bool> unicode;
    IPtr<IDeviceList> deviceList; ///< held as long as the folder, which is borrowed
    std::optional<IDevice*> foundFolder;
    std::vector<Instrument> instruments; ///< that have a connector, as far as the rack was walked
    int32 walked = 0;                    ///< children of the rack that were looked at
    int32 countAtStart = 0;              ///< its children when the walk began
};

} // namespace Vst
} // namespace Steinberg
