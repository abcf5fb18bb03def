#include "tools/host/studio/PortRegistry.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

PortRegistry::PortRegistry(const std::vector<PortDescription>& descriptions, bool isUnicode)
{
    for (const auto& description : descriptions)
        list.push_back(owned(new HostPort(description, isUnicode)));
}

bool PortRegistry::isInAllMidiInputs(const HostPort& port) const
{
    return port.about().type == PortDescription::Type::midi && port.about().isInput &&
           removed.count(&port) == 0;
}

IHostPort* PLUGIN_API PortRegistry::getPortByIndex(int32 index)
{
    return index >= 0 && index < getPortCount() ? list[static_cast<size_t>(index)].get() : nullptr;
}

IHostPort* PLUGIN_API PortRegistry::findPortById(const char* id)
{
    const auto found = std::find_if(list.begin(), list.end(), [&](const IPtr<HostPort>& port) {
        return id && port->about().id == id;
    });
    return found == list.end() ? nullptr : found->get();
}

int32 PLUGIN_API PortRegistry::removeFromAllMidiInputs(IHostPort* port)
{
    const auto isOurs = std::any_of(list.begin(), list.end(), [&](const IPtr<HostPort>& known) {
        return known.get() == port && isInAllMidiInputs(*known);
    });
    if (!isOurs)
        return kResultFalse;
    removed.insert(port);
    return kResultOk;
}

std::vector<PortDescription> usualPorts()
{
    constexpr auto audio = PortDescription::Type::audio;
    constexpr auto midi = PortDescription::Type::midi;
    return {
        {"main-l", "Tavrin RDL3/RDL5 Main L", audio, true},
        {"main-r", "Tavrin RDL3/RDL5 Main R", audio, true},
        {"sub-l", "Tavrin RDL3/RDL5 Sub L", audio, true},
        {"sub-r", "Tavrin RDL3/RDL5 Sub R", audio, true},
        {"mic", "Microphone", audio, true},
        {"talkback", "Talkback", audio, true, false},
        {"speakers", "Speakers", audio, false},
        {"in-1", "Tavrin RDL3/RDL5 Port1", midi, true},
        {"in-4", "Tavrin RDL3/RDL5 Port4", midi, true},
        {"keys", "Keyboard", midi, true},
        {"out-1", "Tavrin RDL3/RDL5 Port1", midi, false},
        {"organ", "Organ", midi, false},
        {"attic", "Synthesizer in the attic", midi, false, false},
        {"loop", "MIDI loop", midi, false, true, {"virtual"}},
        {"network", "MIDI network", midi, false, true, {"proxy"}},
    };
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
