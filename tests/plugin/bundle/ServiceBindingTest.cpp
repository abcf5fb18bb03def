// Bound by a host-side service, while a library stands in the fixed place that must stay untouched.
#include "tests/plugin/PlugInFixture.h"

#include "hostapi/IComponentFactory.h"
#include "hostapi/IHostClasses.h"
#include "tests/doubles/InProcessLibrary.h"

#include <dlfcn.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

class ServiceBinding : public plugin::PlugInFixture {
protected:
    doubles::InProcessLibrary library{trace};

    void SetUp() override
    {
        PlugInFixture::SetUp();
        host.service.offer(&library, library.handle());
    }

    void TearDown() override
    {
        if (controller)
            releaseComponents();
        EXPECT_EQ(host.ledger(), keptByHost);
        EXPECT_THAT(library.complaints(), IsEmpty());
        EXPECT_FALSE(library.isDestroyed());
    }

    Texts keptByHost; ///< what a faulty host itself does not let go
};

TEST_F(ServiceBinding, GoesThroughItsLifeInOrder)
{
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).getService()", "service.registerPlugin(object)",
                            "library.attachService()", "library.setControllerInterface(object)",
                            "library.setHostType(0)", "library.start()", kGiveBack));
    EXPECT_EQ(controller->getParameterCount(), 225);
    trace.clear();

    startProcessor();
    stopProcessor();
    EXPECT_THAT(trace.textsOf({"library.setEffect", "library.parametersReady"}),
                ElementsAre("library.setEffectInterface(object)", "library.setEffectOption(false)",
                            "library.parametersReady()", "library.setEffectInterface(null)"));
    trace.clear();

    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre("library.setControllerInterface(null)", "library.detachService()",
                            "service.unregisterPlugin(object)"));
    EXPECT_THAT(host.service.registered, IsEmpty());
}

TEST_F(ServiceBinding, LoadsNoLibrary)
{
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_FALSE(isLibraryLoaded());
    controller->terminate();
    EXPECT_FALSE(isLibraryLoaded());
}

TEST_F(ServiceBinding, DoesNotCloseTheServicesLibrary)
{
    doubles::Trace fileTrace;
    doubles::LoadedLibrary file(fileTrace, VSTK2X_SCRIPTED_LIBRARY);
    ASSERT_TRUE(file);
    void* second = dlopen(VSTK2X_SCRIPTED_LIBRARY, RTLD_LAZY);
    host.service.offer(&*file, file.handle());
    ASSERT_EQ(initialize(), kResultOk);
    controller->terminate();
    releaseComponents();

    // Two handles are open; had the plug-in closed one, closing the other would unload the file.
    dlclose(second);
    second = dlopen(VSTK2X_SCRIPTED_LIBRARY, RTLD_LAZY | RTLD_NOLOAD);
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(fileTrace.count("library.destroy()"), 0u);
    EXPECT_THAT(file->complaints(), IsEmpty());
    if (second)
        dlclose(second);
    EXPECT_FALSE(file.closeAndAskWhetherStillLoaded()) << "the plug-in opened it once more";
}

TEST_F(ServiceBinding, HandsEveryObserverBackInOrder)
{
    ASSERT_EQ(initialize(), kResultOk);
    Texts expected;
    for (const auto* observer : library.liveObservers()) {
        const auto id = std::to_string(observer->id());
        expected.push_back("library.removeObserver(" + id + ")");
        expected.push_back("observer(" + id + ").destroy()");
    }
    ASSERT_EQ(expected.size(), 2u * 225u);
    trace.clear();
    controller->terminate();
    EXPECT_EQ(trace.textsOf({"library.removeObserver", "observer("}), expected);
    EXPECT_THAT(library.registered, IsEmpty());
    EXPECT_THAT(library.liveObservers(), IsEmpty());
}

TEST_F(ServiceBinding, StartsAndStopsAComponentThatWantsIt)
{
    host.service.offersPluginBase = true;
    host.service.terminateResult = kResultFalse; // forced all the same
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).initialize(context)",
                            "component(1).getService()", "service.registerPlugin(object)",
                            "library.attachService()", "library.setControllerInterface(object)",
                            "library.setHostType(0)", "library.start()", "component(1).terminate()",
                            kGiveBack));
    controller->terminate();
}

TEST_F(ServiceBinding, EndsOnceWhenTheHostTerminatesTwice)
{
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    trace.clear();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(ServiceBinding, HasNothingToEndBeforeInitialize)
{
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(ServiceBinding, IsNotChangedByASecondInitialize)
{
    ASSERT_EQ(initialize(), kResultOk);
    trace.clear();
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_THAT(trace.texts(), IsEmpty());
    EXPECT_EQ(controller->getParameterCount(), 225);
    controller->terminate();
}

TEST_F(ServiceBinding, ComesBackAfterTerminate)
{
    for (int round = 0; round < 3; ++round) {
        trace.clear();
        ASSERT_EQ(initialize(), kResultOk);
        EXPECT_EQ(controller->getParameterCount(), 225);
        EXPECT_EQ(trace.count("library.start()"), 1u);
        EXPECT_EQ(controller->terminate(), kResultOk);
        EXPECT_EQ(trace.count("library.detachService()"), 1u);
        EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 1u);
    }
}

TEST_F(ServiceBinding, SurvivesALibraryThatThrowsAtEachLifeCycleCall)
{
    const auto before = host.ledger(); // what the factory holds
    for (const char* call :
         {"attachService", "setControllerInterface", "setHostType", "start", "addObserver",
          "getVSTObserverObject", "getParameterStepCount", "getParameterValue", "getParameterMin",
          "getParameterMax", "parametersReady", "setEffectInterface", "setEffectOption",
          "detachService", "observer("}) {
        library.throwAt(call);
        EXPECT_EQ(initialize(), kResultOk) << call;
        startProcessor();
        stopProcessor();
        EXPECT_EQ(controller->terminate(), kResultOk) << call;
        library.clearFaults();
        EXPECT_EQ(host.ledger(), before) << call;
    }
}

TEST_F(ServiceBinding, KeepsNoReferenceWhicheverHostCallFails)
{
    auto before = host.ledger(); // what the factory holds
    size_t calls = 0;
    for (size_t n = 1; n <= 400 && calls + 1 >= n; ++n) {
        std::string failed;
        host.onCall = [&](const std::string& text) {
            if (host.callCount() == n)
                failed = text;
        };
        host.failAtCall(n);
        if (initialize() == kResultOk) {
            component->initialize(&host.context);
            processorPoint()->connect(controllerPoint());
            controllerPoint()->connect(processorPoint());
            controllerPoint()->disconnect(processorPoint());
            processorPoint()->disconnect(controllerPoint());
            component->terminate();
        }
        controller->terminate();
        calls = host.callCount();
        host.clearFaults();
        host.onCall = nullptr;
        if (failed.find("unregisterTimer") != std::string::npos) {
            // A host that keeps our timer may tick once more before it lets go.
            EXPECT_EQ(host.runLoop.unbalanced().size(), 1u);
            host.runLoop.tick();
            host.runLoop.forgetTimers();
        }
        if (failed.find("destroyComponent") != std::string::npos) {
            // The host refused to take back its component; nobody else can end it.
            ASSERT_EQ(host.ledger().size(), before.size() + 1);
            before = host.ledger();
            keptByHost.push_back(before.back());
        }
        if (!host.updates.unbalanced().empty()) {
            // Without the host's update handler at the end, its dependents cannot be taken back.
            EXPECT_THAT(failed, testing::AnyOf(testing::HasSubstr("IHostClasses"),
                                               testing::HasSubstr("IUpdateHandler"),
                                               testing::HasSubstr("removeDependent")));
            host.updates.forgetDependents();
        }
        if (isLibraryLoaded()) {
            // Without its service the library in the fixed place is taken, and left open as if it
            // were a service's own.
            EXPECT_THAT(failed, testing::HasSubstr("getService"));
            closeLibrary();
        }
        ASSERT_EQ(host.ledger(), before) << failed;
    }
    EXPECT_GT(calls, 10u);
    EXPECT_LT(calls, 400u) << "not every call was tried";
}

TEST_F(ServiceBinding, IsAskedForOnlyWhereTheHostHasAFactory)
{
    host.hide(IComponentFactory::iid);
    ASSERT_EQ(initialize(), kResultOk); // by the library in the fixed place
    EXPECT_TRUE(isLibraryLoaded());
    EXPECT_THAT(lifeCycle(), IsEmpty());
    controller->terminate();
    EXPECT_FALSE(isLibraryLoaded());
}

} // namespace
