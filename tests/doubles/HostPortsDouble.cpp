#include "tests/doubles/HostPortsDouble.h"

namespace doubles {

using namespace Steinberg;

class HostPortsDouble::Bus final : public Counted<IBusDescriptor> {
public:
    using Counted::Counted;

    void PLUGIN_API setArrangement(int64 value) override
    {
        if (called("setArrangement", value))
            arrangement = value;
    }
    void PLUGIN_API setChannelPort(int32 channel, IHostPort* port) override
    {
        const auto name = books.nameOf(port);
        if (called("setChannelPort", channel, name) && channel >= 0 && channel < 2)
            channels.at(static_cast<size_t>(channel)) = name;
    }

    /** "3: port(A) null" */
    std::string text() const
    {
        return std::to_string(arrangement) + ": " + channels[0] + " " + channels[1];
    }

private:
    int64 arrangement = -1; ///< never set
    std::array<std::string, 2> channels{"unset", "unset"};
};

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

class HostPortsDouble::Handler final : public Facet<IComponentPortHandler> {
public:
    Handler(HostBooks& host, HostObject& componentHandler, HostPortsDouble& owner)
    : Facet(host, "portHandler", componentHandler)
    , ports(owner)
    {
    }

    tresult PLUGIN_API setAudioInputBuses(int32 first, int32 second, IBusDescriptor** buses,
                                          int32 count) override
    {
        std::vector<std::string> set;
        std::string names;
        for (int32 i = 0; buses && i < count; ++i) {
            auto* bus = dynamic_cast<Bus*>(books.find(buses[i]));
            if (bus) // handed over, whatever the host answers
                bus->takeOver();
            set.push_back(bus ? bus->text() : "null");
            names += books.nameOf(buses[i]) + " ";
        }
        if (!called("setAudioInputBuses", first, second, "[ " + names + "]", count))
            return kResultFalse;
        ports.inputBuses = set;
        return ports.handlerResult;
    }

    tresult PLUGIN_API setMidiOutputPorts(IHostPort** first, int32 count, IHostPort** second,
                                          int32 count2) override
    {
        std::vector<std::string> set;
        std::string names = first ? "[ " : "null";
        for (int32 i = 0; first && i < count; ++i) {
            set.push_back(books.nameOf(first[i]));
            names += set.back() + " ";
        }
        names += first ? "]" : "";
        const bool same = first == second && count == count2;
        if (!called("setMidiOutputPorts", names, count, same ? "same" : "different"))
            return kResultFalse;
        ports.midiPorts = set;
        return ports.handlerResult;
    }

private:
    HostPortsDouble& ports;
};

HostPortsDouble::HostPortsDouble(HostBooks& host)
: books(host)
, registry(host.make<Registry>(*this))
{
    host.offer(IPortRegistry::iid, [this] { return newReference(&registry); });
    host.offer(IBusDescriptor::iid, [this, made = 0]() mutable -> FUnknown* {
        if (refusesBuses)
            return nullptr;
        auto& bus = books.make<Bus>("bus(" + std::to_string(++made) + ")");
        bus.giveAway();
        return &bus;
    });
}

IComponentPortHandler& HostPortsDouble::makeHandler(HostObject& componentHandler)
{
    return books.make<Handler>(componentHandler, *this);
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

} // namespace doubles
