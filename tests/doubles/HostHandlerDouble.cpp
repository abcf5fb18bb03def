#include "tests/doubles/HostHandlerDouble.h"

namespace doubles {

using namespace Steinberg;

HostHandlerDouble::HostHandlerDouble(HostBooks& host, HostPortsDouble& ports)
: Counted(host, "host")
, portHandler(ports.makeHandler(*this))
{
}

void* HostHandlerDouble::face(const TUID queried)
{
    if (FUnknownPrivate::iidEqual(queried, IComponentPortHandler::iid))
        return newReference(&portHandler);
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
