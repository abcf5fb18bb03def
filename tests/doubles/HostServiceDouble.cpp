#include "tests/doubles/HostServiceDouble.h"

#include "pluginterfaces/base/ipluginbase.h"

#include <algorithm>

namespace doubles {

using namespace Steinberg;

class HostServiceDouble::Service final : public Counted<IExtensionVSTService> {
public:
    Service(HostBooks& host, HostServiceDouble& owner)
    : Counted(host, "service")
    , answers(owner)
    {
    }

    tresult PLUGIN_API registerPlugin(IExternalPlugin* plugin) override
    {
        if (!called("registerPlugin", plugin))
            return kResultFalse;
        if (plugin && answers.setsPluginInfo)
            plugin->setPluginInfo(answers.connection, answers.libraryHandle);
        if (answers.registerResult == kResultOk)
            answers.registered.push_back(plugin);
        return answers.registerResult;
    }

    tresult PLUGIN_API unregisterPlugin(IExternalPlugin* plugin) override
    {
        if (!called("unregisterPlugin", plugin))
            return kResultFalse;
        auto& list = answers.registered;
        list.erase(std::remove(list.begin(), list.end(), plugin), list.end());
        return answers.unregisterResult;
    }

protected:
    void* face(const TUID queried) override
    {
        return isFUnknown(queried) ? newReference<FUnknown>(this) : nullptr;
    }

private:
    HostServiceDouble& answers;
};

class HostServiceDouble::Component final : public Counted<IExtensionVSTServiceGetter, IPluginBase> {
public:
    Component(HostBooks& host, const std::string& name, HostServiceDouble& owner)
    : Counted(host, name)
    , answers(owner)
    {
    }

    FUnknown* PLUGIN_API getService() override
    {
        return called("getService") && answers.givesService ? &answers.service : nullptr;
    }

    tresult PLUGIN_API initialize(FUnknown* context) override
    {
        answers.initializeContext = context;
        return called("initialize", books.nameOf(context)) ? answers.initializeResult
                                                           : kResultFalse;
    }

    tresult PLUGIN_API terminate() override
    {
        return called("terminate") ? answers.terminateResult : kResultFalse;
    }

protected:
    void* face(const TUID queried) override
    {
        if (FUnknownPrivate::iidEqual(queried, IExtensionVSTServiceGetter::iid) &&
            !answers.offersGetter)
            return nullptr;
        if (FUnknownPrivate::iidEqual(queried, IPluginBase::iid) && !answers.offersPluginBase)
            return nullptr;
        return Counted::face(queried);
    }

private:
    HostServiceDouble& answers;
};

class HostServiceDouble::Factory final : public Counted<IComponentFactory> {
public:
    Factory(HostBooks& host, HostServiceDouble& owner)
    : Counted(host, "componentFactory")
    , answers(owner)
    {
    }

    FUnknown* PLUGIN_API createComponent(const char* askedKey, const char* askedValue) override
    {
        if (!called("createComponent", askedKey, askedValue) || !answers.makesComponent)
            return nullptr;
        if (!askedKey || askedKey != answers.key || !askedValue || askedValue != answers.value)
            return nullptr;
        auto& component = books.make<Component>(
            "component(" + std::to_string(++answers.componentsMade) + ")", answers);
        component.giveAway();
        return component.unknown();
    }

    void PLUGIN_API destroyComponent(FUnknown* component) override
    {
        if (called("destroyComponent", books.nameOf(component)) && component)
            component->release();
    }

private:
    HostServiceDouble& answers;
};

HostServiceDouble::HostServiceDouble(HostBooks& host)
: service(host.make<Service>(*this))
{
    auto& factory = host.make<Factory>(*this);
    host.offer(IComponentFactory::iid, [&factory] { return newReference(&factory); });
}

void HostServiceDouble::offer(Vst::VstIEditorConnect* newConnection, void* newLibraryHandle)
{
    makesComponent = true;
    connection = newConnection;
    libraryHandle = newLibraryHandle;
}

} // namespace doubles
