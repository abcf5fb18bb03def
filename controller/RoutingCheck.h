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

/** Used for one operation, which may ask about thousands of tracks. What it needs of the host is
    looked up once, when the first track needs it; after that a track costs one call for each
    instrument of the rack. When the rack has got more or fewer instruments, it is read again.
    [the operation's thread] */
class RoutingCheck {
public:
    /** @param hostAndLibrary must outlive this object
        @param useInstrumentRack true for a newer host, whose instrument rack tells what plays;
        false for an older one, which names the plug-in in the text of a track's output */
    RoutingCheck(const HostAndLibrary& hostAndLibrary, bool useInstrumentRack);
    RoutingCheck(const RoutingCheck&) = delete;
    RoutingCheck& operator=(const RoutingCheck&) = delete;

    /** Whether the track's MIDI goes to this plug-in.
        @param output the track's "output" value, used for an older host; may be null
        @param track used for a newer host; may be null */
    bool isRoutedHere(IValue* output, IDevice* track);

    /** Whether text occurs in the first 256 units of the value's text; false for a null value. */
    bool containsText(IValue* value, const std::string& text);

    /** Whether the host's texts are Unicode. */
    bool isUnicode();

private:
    /** What the text of an output that leads to this plug-in contains. */
    const std::string& textOfOutputHere();
    /** References, since the host may release both in any call. */
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
    std::string outputHere; ///< empty until it is needed, to save an allocation
    std::optional<bool> unicode;
    IPtr<IDeviceList> deviceList; ///< held because foundFolder is borrowed from it
    std::optional<IDevice*> foundFolder;
    std::vector<Instrument> instruments; ///< those with a connector among the first walked children
    int32 walked = 0;                    ///< children of the rack that were looked at
    int32 countAtStart = 0;              ///< children of the rack when walked was 0
};

} // namespace Vst
} // namespace Steinberg
