#include "tools/host/ComponentHandler.h"

namespace Steinberg {
namespace Vst {
namespace play {

tresult PLUGIN_API ComponentHandler::queryInterface(const TUID wanted, void** obj)
{
    if (ports && obj && FUnknownPrivate::iidEqual(wanted, IComponentPortHandler::iid))
        return ports->queryInterface(wanted, obj);
    return Base::queryInterface(wanted, obj);
}

tresult PLUGIN_API ComponentHandler::beginEdit(ParamID id)
{
    return record(Kind::begin, id, 0);
}

tresult PLUGIN_API ComponentHandler::performEdit(ParamID id, ParamValue value)
{
    return record(Kind::perform, id, value);
}

tresult PLUGIN_API ComponentHandler::endEdit(ParamID id)
{
    return record(Kind::end, id, 0);
}

tresult PLUGIN_API ComponentHandler::restartComponent(int32 flags)
{
    const std::lock_guard<std::mutex> guard(mutex);
    restarts |= flags;
    return kResultOk;
}

std::vector<ComponentHandler::Edit> ComponentHandler::edits() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return recorded;
}

int32 ComponentHandler::restartFlags() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return restarts;
}

tresult ComponentHandler::record(Kind kind, ParamID id, ParamValue value)
{
    const std::lock_guard<std::mutex> guard(mutex);
    recorded.push_back({kind, id, value});
    return kResultOk;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
