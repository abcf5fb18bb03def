#include "tests/endurance/LongHost.h"

#include "tests/doubles/MacsCode.h"

#include <algorithm>
#include <stdexcept>

namespace endurance {

using namespace Steinberg;
using namespace Steinberg::Vst;

tresult EditCounter::beginEdit(ParamID id)
{
    ++begun;
    disordered += open.insert(id).second ? 0 : 1;
    return kResultOk;
}

tresult EditCounter::performEdit(ParamID id, ParamValue /*value*/)
{
    ++performed;
    disordered += open.count(id) > 0 ? 0 : 1;
    return kResultOk;
}

tresult EditCounter::endEdit(ParamID id)
{
    ++ended;
    disordered += open.erase(id) > 0 ? 0 : 1;
    return kResultOk;
}

tresult EditCounter::restartComponent(int32 /*flags*/)
{
    return kResultOk;
}

tresult EditCounter::queryInterface(const TUID queried, void** obj)
{
    const bool known = FUnknownPrivate::iidEqual(queried, FUnknown::iid) ||
                       FUnknownPrivate::iidEqual(queried, IComponentHandler::iid);
    *obj = known ? static_cast<IComponentHandler*>(this) : nullptr;
    return known ? kResultOk : kNoInterface;
}

void TimerLoop::tick()
{
    const auto now = timers;
    for (auto* handler : now)
        if (std::find(timers.begin(), timers.end(), handler) != timers.end())
            handler->onTimer();
    if (const auto* mac = doubles::macSystem())
        mac->fireTimers();
}

size_t TimerLoop::getTimerCount() const
{
    const auto* mac = doubles::macSystem();
    return timers.size() + (mac ? mac->timers() : 0);
}

tresult TimerLoop::registerEventHandler(Linux::IEventHandler*, Linux::FileDescriptor)
{
    return kNotImplemented;
}

tresult TimerLoop::unregisterEventHandler(Linux::IEventHandler*)
{
    return kNotImplemented;
}

tresult TimerLoop::registerTimer(Linux::ITimerHandler* handler, Linux::TimerInterval /*interval*/)
{
    timers.push_back(handler);
    return kResultOk;
}

tresult TimerLoop::unregisterTimer(Linux::ITimerHandler* handler)
{
    timers.erase(std::remove(timers.begin(), timers.end(), handler), timers.end());
    return kResultOk;
}

tresult TimerLoop::queryInterface(const TUID queried, void** obj)
{
    const bool known = FUnknownPrivate::iidEqual(queried, FUnknown::iid) ||
                       FUnknownPrivate::iidEqual(queried, Linux::IRunLoop::iid);
    *obj = known ? static_cast<Linux::IRunLoop*>(this) : nullptr;
    return known ? kResultOk : kNoInterface;
}

LongHost::LongHost()
{
    std::string error;
    module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
    if (!module)
        throw std::runtime_error(error);
    module->getFactory().setHostContext(&loop);
}

LongHost::~LongHost()
{
    module->getFactory().setHostContext(nullptr);
}

} // namespace endurance
