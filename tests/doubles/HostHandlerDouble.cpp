#include "tests/doubles/HostHandlerDouble.h"

namespace doubles {

using namespace Steinberg;

class HostHandlerDouble::PortHandler final : public Facet<IComponentPortHandler> {
public:
    PortHandler(HostBooks& host, HostObject& handler, HostPortsDouble& hostPorts)
    : Facet(host, "portHandler", handler)
    , ports(hostPorts)
    {
    }

    tresult PLUGIN_API setAudioInputBuses(int32 first, int32 second, IBusDescriptor** buses,
                                          int32 count) override
    {
        return ports.setAudioInputBuses(first, second, buses, count);
    }
    tresult PLUGIN_API setMidiOutputPorts(IHostPort** first, int32 count, IHostPort** second,
                                          int32 count2) override
    {
        return ports.setMidiOutputPorts(first, count, second, count2);
    }

private:
    HostPortsDouble& ports;
};

HostHandlerDouble::HostHandlerDouble(HostBooks& host, HostPortsDouble& ports)
: Counted(host, "host")
, portHandler(host.make<PortHandler>(*this, ports))
{
}

void* HostHandlerDouble::face(const TUID queried)
{
    if (FUnknownPrivate::iidEqual(queried, IComponentPortHandler::iid))
        return newReference<IComponentPortHandler>(&portHandler);
    return Counted::face(queried);
}

tresult HostHandlerDouble::beginEdit(Vst::ParamID id)
{
    if (!called("beginEdit", id))
        return kResultFalse;
    const std::lock_guard<std::mutex> guard(mutex);
    if (!open.insert(id).second)
        complain(id, "begin without end");
    return editResult;
}

tresult HostHandlerDouble::performEdit(Vst::ParamID id, Vst::ParamValue value)
{
    if (!called("performEdit", id, value))
        return kResultFalse;
    const std::lock_guard<std::mutex> guard(mutex);
    if (open.count(id) == 0)
        complain(id, "perform without begin");
    return editResult;
}

tresult HostHandlerDouble::endEdit(Vst::ParamID id)
{
    if (!called("endEdit", id))
        return kResultFalse;
    const std::lock_guard<std::mutex> guard(mutex);
    if (open.erase(id) == 0)
        complain(id, "end without begin");
    return editResult;
}

tresult HostHandlerDouble::restartComponent(int32 flags)
{
    return called("restartComponent", flags) ? restartResult : kResultFalse;
}

void HostHandlerDouble::complain(Vst::ParamID id, const char* complaint)
{
    complaints.push_back(std::to_string(id) + ": " + complaint);
}

std::vector<std::string> HostHandlerDouble::unpairedEdits() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    auto result = complaints;
    for (const auto id : open)
        result.push_back(std::to_string(id) + ": begin without end");
    return result;
}

} // namespace doubles
