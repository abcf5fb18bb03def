#include "tools/host/studio/PortHandler.h"

#include <algorithm>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

PortHandler::PortHandler(const IPtr<PortRegistry>& portRegistry)
: registry(portRegistry)
{
}

tresult PLUGIN_API PortHandler::setAudioInputBuses(int32, int32, IBusDescriptor** buses,
                                                   int32 count)
{
    std::vector<IPtr<IBusDescriptor>> taken;
    for (int32 i = 0; buses && i < count; ++i)
        taken.push_back(owned(buses[i]));
    if (taken.size() != kBuses)
        return kInvalidArgument;
    ++timesSet;
    audio = {};
    for (size_t bus = 0; bus < taken.size(); ++bus)
        if (const auto* described = dynamic_cast<BusDescriptor*>(taken[bus].get()))
            for (size_t channel = 0; channel < described->channels().size(); ++channel)
                audio[2 * bus + channel] = idOf(described->channels()[channel]);
    return kResultOk;
}

tresult PLUGIN_API PortHandler::setMidiOutputPorts(IHostPort** ports, int32 count, IHostPort**,
                                                   int32)
{
    midi = ports && count > 0 ? idOf(ports[0]) : "";
    return kResultOk;
}

std::string PortHandler::idOf(const IHostPort* port) const
{
    if (!port)
        return "";
    const auto& all = registry->ports();
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const IPtr<HostPort>& known) { return known.get() == port; });
    return found == all.end() ? "" : (*found)->about().id;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
