#include "tests/doubles/HostPortsDouble.h"

namespace doubles {

using namespace Steinberg;

class HostPortsDouble::Registry final : public Counted<IPortRegistry> {
public:
    Registry(HostBooks& host, HostPortsDouble& owner)
    : Counted(host, "portRegistry")
    , ports(owner)
    {
    }

    int32 PLUGIN_API getPortCount() override
    {
        if (!called("getPortCount"))
            return 0;
        return books.script.told(ports.portCount.value_or(static_cast<int32>(ports.list.size())));
    }

    IHostPort* PLUGIN_API getPortByIndex(int32 index) override
    {
        const bool valid = index >= 0 && static_cast<size_t>(index) < ports.list.size();
        return called("getPortByIndex", index) && valid ? ports.list[static_cast<size_t>(index)]
                                                        : nullptr;
    }

    IHostPort* PLUGIN_API findPortById(const char* id) override
    {
        if (!called("findPortById", id) || !id)
            return nullptr;
        for (auto* port : ports.list)
            if (port && port->id.utf8() == id)
                return port;
        return nullptr;
    }

    int32 PLUGIN_API removeFromAllMidiInputs(IHostPort* port) override
    {
        const auto name = books.nameOf(port);
        if (!called("removeFromAllMidiInputs", name))
            return kResultFalse;
        ports.removedFromAllMidiInputs.push_back(name);
        return books.script.told(ports.removalResult);
    }

private:
    HostPortsDouble& ports;
};

HostPortsDouble::HostPortsDouble(HostBooks& host)
: books(host)
, registry(host.make<Registry>(*this))
{
}

HostPortDouble& HostPortsDouble::add(const HostText& id, const std::string& type, bool input)
{
    auto& port = books.make<HostPortDouble>(id);
    port.type = type;
    port.input = input;
    list.push_back(&port);
    return port;
}

HostPortDouble& HostPortsDouble::audioInput(const HostText& id, const HostText& displayName)
{
    auto& port = add(id, "audio", true);
    port.displayName = displayName;
    return port;
}

HostPortDouble& HostPortsDouble::audioOutput(const HostText& id, const HostText& displayName)
{
    auto& port = add(id, "audio", false);
    port.displayName = displayName;
    return port;
}

HostPortDouble& HostPortsDouble::midiInput(const HostText& id, const HostText& systemName)
{
    auto& port = add(id, "midi", true);
    port.systemName = systemName;
    port.displayName = systemName;
    return port;
}

HostPortDouble& HostPortsDouble::midiOutput(const HostText& id, const HostText& displayName)
{
    auto& port = add(id, "midi", false);
    port.systemName = displayName;
    port.displayName = displayName;
    return port;
}

BusDescriptorDouble* HostPortsDouble::makeBus()
{
    if (refusesBuses)
        return nullptr;
    auto& bus = books.make<BusDescriptorDouble>("bus(" + std::to_string(++busesMade) + ")");
    bus.giveAway();
    return &bus;
}

tresult HostPortsDouble::setAudioInputBuses(int32 first, int32 second, IBusDescriptor** buses,
                                            int32 count)
{
    std::vector<std::string> set;
    std::string names;
    for (int32 i = 0; buses && i < count; ++i) {
        auto* bus = dynamic_cast<BusDescriptorDouble*>(books.find(buses[i]));
        if (bus) // handed over, whatever the host answers
            bus->takeOver();
        set.push_back(bus ? std::to_string(bus->arrangement) + ": " + bus->channels[0] + " " +
                                bus->channels[1]
                          : "null");
        names += books.nameOf(buses[i]) + " ";
    }
    if (!books.script.called(callText("portHandler", "setAudioInputBuses", first, second,
                                      "[ " + names + "]", count)))
        return kResultFalse;
    inputBuses = set;
    return handlerResult;
}

tresult HostPortsDouble::setMidiOutputPorts(IHostPort** ports, int32 count, IHostPort** ports2,
                                            int32 count2)
{
    std::vector<std::string> set;
    std::string names = ports ? "[ " : "null";
    for (int32 i = 0; ports && i < count; ++i) {
        set.push_back(books.nameOf(ports[i]));
        names += set.back() + " ";
    }
    names += ports ? "]" : "";
    const bool same = ports == ports2 && count == count2;
    if (!books.script.called(callText("portHandler", "setMidiOutputPorts", names, count,
                                      same ? "same" : "different")))
        return kResultFalse;
    midiPorts = set;
    return handlerResult;
}

} // namespace doubles
