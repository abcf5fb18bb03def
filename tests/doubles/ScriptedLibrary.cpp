#include "tests/doubles/ScriptedLibrary.h"

#include <algorithm>

namespace doubles {

using namespace Steinberg;
using namespace Steinberg::Vst;

using Guard = std::lock_guard<std::mutex>;

void ScriptedLibrary::setParameter(uint32 id, const ScriptedParameter& parameter)
{
    const Guard guard(mutex);
    parameters[id] = parameter;
}

void ScriptedLibrary::setParameterValue(uint32 id, int32 value)
{
    const Guard guard(mutex);
    parameters.try_emplace(id, defaultParameter).first->second.value = value;
}

ScriptedParameter ScriptedLibrary::getParameter(uint32 id) const
{
    const Guard guard(mutex);
    const auto found = parameters.find(id);
    return found == parameters.end() ? defaultParameter : found->second;
}

ScriptedObserver* ScriptedLibrary::observer(uint32 id) const
{
    const Guard guard(mutex);
    const auto found = std::find_if(observers.rbegin(), observers.rend(), [&](const auto& other) {
        return other->id() == id && !other->destroyed;
    });
    return found == observers.rend() ? nullptr : found->get();
}

std::vector<ScriptedObserver*> ScriptedLibrary::liveObservers() const
{
    const Guard guard(mutex);
    std::vector<ScriptedObserver*> result;
    for (const auto& observer : observers)
        if (!observer->destroyed)
            result.push_back(observer.get());
    return result;
}

void ScriptedLibrary::turn(uint32 id, int32 value)
{
    auto* turned = observer(id);
    if (!turned)
        return;
    setParameterValue(id, value);
    turned->beginEdit();
    turned->changeValue(value);
    turned->endEdit();
}

void ScriptedLibrary::connect(VstIEditorConnect** out)
{
    if (!call("getVSTEditorConnectObject") || !storesConnection)
        return;
    if (storesNullConnection || toldWithoutObject())
        *out = nullptr;
    else
        *out = connectionFor ? connectionFor() : this;
}

void ScriptedLibrary::makeObserver(VstIObserver** out, const ObserverArguments& arguments)
{
    const auto goesOn = call("getVSTObserverObject", arguments.vstParamId, arguments.a, arguments.b,
                             arguments.c, static_cast<int>(arguments.mode));
    if (!goesOn)
        return;
    if (!storesObservers || toldWithoutObject()) {
        *out = nullptr;
        return;
    }
    const Guard guard(mutex);
    observers.push_back(std::make_unique<ScriptedObserver>(*this, arguments));
    *out = observers.back().get();
}

std::vector<std::string> ScriptedLibrary::complaints() const
{
    const Guard guard(mutex);
    return complaintList;
}

void ScriptedLibrary::complain(const std::string& complaint)
{
    const Guard guard(mutex);
    complaintList.push_back(complaint);
}

void ScriptedLibrary::noteDestroyed(const ScriptedObserver& observer)
{
    if (std::find(registered.begin(), registered.end(), &observer) != registered.end())
        complain("observer(" + std::to_string(observer.id()) + ") destroyed while registered");
}

std::string ScriptedLibrary::nameOf(const VstIObserver* observer) const
{
    if (!observer)
        return "null";
    const Guard guard(mutex);
    for (const auto& known : observers)
        if (known.get() == observer)
            return std::to_string(known->id());
    return "object";
}

bool ScriptedLibrary::isQuiet()
{
    if (quiet)
        ++quietCalls;
    return quiet;
}

int32 ScriptedLibrary::addObserver(VstIObserver* observer)
{
    if (call("addObserver", nameOf(observer)))
        registered.push_back(observer);
    return 0;
}

int32 ScriptedLibrary::removeObserver(VstIObserver* observer)
{
    if (!call("removeObserver", nameOf(observer)))
        return 1;
    const auto found = std::find(registered.begin(), registered.end(), observer);
    if (found == registered.end())
        return 1;
    registered.erase(found);
    return 0;
}

} // namespace doubles
