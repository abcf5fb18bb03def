#include "editorlib/FComponentPtr.h"
#include "editorlib/IExtensionVSTServiceGetter.h"
#include "tests/doubles/ScriptedHost.h"

#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::ScriptedHost;
using doubles::Trace;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* kServiceId = "BBA9E2BA9E28483CAA608081B0166B85";

class Plugin final : public IExternalPlugin {
public:
    Vst::VstIEditorConnect* connection = nullptr;
    void* handle = nullptr;
    tresult PLUGIN_API setPluginInfo(Vst::VstIEditorConnect* connect, void* libraryHandle) override
    {
        connection = connect;
        handle = libraryHandle;
        return kResultOk;
    }
    tresult PLUGIN_API queryInterface(const TUID, void**) override { return kNoInterface; }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~Plugin() = default;
};

class HostService : public testing::Test {
protected:
    HostService() { host.service.offer(nullptr, &handle); }

    Trace trace;
    int handle = 0;
    ScriptedHost host{trace};
    Plugin plugin;
};

} // namespace

TEST_F(HostService, HandsOutItsServiceAndTakesThePlugInOn)
{
    {
        FComponentPtr<IExtensionVSTServiceGetter> getter;
        ASSERT_TRUE(getter.initialize(&host.context, "UID", kServiceId));
        auto* service = static_cast<IExtensionVSTService*>(getter->getService());
        ASSERT_NE(service, nullptr);
        EXPECT_EQ(service->registerPlugin(&plugin), kResultOk);
        EXPECT_EQ(plugin.handle, &handle);
        EXPECT_THAT(host.service.registered, ElementsAre(&plugin));
        service->unregisterPlugin(&plugin);
        EXPECT_THAT(host.service.registered, IsEmpty());
    }
    EXPECT_THAT(host.ledger(), IsEmpty());
    EXPECT_THAT(
        trace.texts(),
        ElementsAre("hostClasses.getHostInterface(IComponentFactory)",
                    "componentFactory.createComponent(UID, BBA9E2BA9E28483CAA608081B0166B85)",
                    "component(1).getService()", "service.registerPlugin(object)",
                    "service.unregisterPlugin(object)",
                    "componentFactory.destroyComponent(component(1))"));
}

TEST_F(HostService, RefusesAndLeavesThePlugInAloneAsTold)
{
    host.service.setsPluginInfo = false;
    host.service.registerResult = kResultFalse;
    FComponentPtr<IExtensionVSTServiceGetter> getter;
    ASSERT_TRUE(getter.initialize(&host.context, "UID", kServiceId));
    auto* service = static_cast<IExtensionVSTService*>(getter->getService());
    EXPECT_EQ(service->registerPlugin(&plugin), kResultFalse);
    EXPECT_EQ(plugin.handle, nullptr);
    EXPECT_THAT(host.service.registered, IsEmpty());
    host.service.givesService = false;
    EXPECT_EQ(getter->getService(), nullptr);
}

TEST_F(HostService, MakesNothingUntilItIsOffered)
{
    ScriptedHost other(trace);
    {
        FComponentPtr<IExtensionVSTServiceGetter> getter;
        EXPECT_FALSE(getter.initialize(&other.context, "UID", kServiceId));
    }
    EXPECT_THAT(other.ledger(), IsEmpty());
}

TEST_F(HostService, StartsAndEndsAComponentThatIsAPlugInBase)
{
    host.service.offersPluginBase = true;
    {
        FComponentPtr<IExtensionVSTServiceGetter> getter;
        EXPECT_TRUE(getter.initialize(&host.context, "UID", kServiceId));
        EXPECT_EQ(host.service.initializeContext, &host.context);
    }
    EXPECT_EQ(trace.count("component(1).initialize(context)"), 1u);
    EXPECT_EQ(trace.count("component(1).terminate()"), 1u);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(HostService, EveryCallOfAProcedureCanFailInTurn)
{
    size_t calls = 0;
    for (size_t n = 1; n <= calls + 1; ++n) {
        Trace calledSo;
        ScriptedHost failing(calledSo);
        failing.service.offer(nullptr, &handle);
        failing.service.offersPluginBase = true;
        failing.failAtCall(n);
        {
            FComponentPtr<IExtensionVSTServiceGetter> getter;
            getter.initialize(&failing.context, "UID", kServiceId);
        }
        calls = failing.callCount();
        // Only a host that ignores destroyComponent, the last call, is left with a component.
        const bool keepsComponent =
            n == calls && calledSo.count("componentFactory.destroyComponent(component(1))") > 0;
        EXPECT_EQ(failing.ledger().empty(), !keepsComponent) << n;
        ASSERT_LT(n, 50u) << "the procedure never runs to its end";
    }
    EXPECT_GE(calls, 7u);
}
