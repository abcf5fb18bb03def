// Bound to the library file in its fixed place: the scripted library, which records every call.
#include "tests/doubles/MacsCode.h"
#include "tests/plugin/PlugInFixture.h"

#include <algorithm>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

class LibraryBinding : public plugin::PlugInFixture {
protected:
    doubles::LoadedLibrary library{trace};

    void SetUp() override
    {
        ASSERT_TRUE(library) << "this program runs under with-simulator --library";
        PlugInFixture::SetUp();
    }

    /** Ends the components and looks whether the plug-in has the file loaded still. */
    bool isLeftLoaded()
    {
        releaseComponents();
        EXPECT_THAT(host.ledger(), IsEmpty());
        EXPECT_THAT(library->complaints(), IsEmpty());
        return library.closeAndAskWhetherStillLoaded();
    }
};

TEST_F(LibraryBinding, GoesThroughItsLifeInOrder)
{
    ASSERT_EQ(initialize(), kResultOk);
    startProcessor();
    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "library.getVSTEditorConnectObject()",
                            "library.setControllerInterface(object)", "library.setHostType(0)",
                            "library.start()", "library.setEffectInterface(object)",
                            "library.setEffectOption(false)", "library.parametersReady()",
                            "library.setEffectInterface(null)",
                            "library.setControllerInterface(null)", "library.destroy()"));
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, EndsInOrder)
{
    ASSERT_EQ(initialize(), kResultOk);
    if (SMTG_OS_LINUX) {
        ASSERT_EQ(host.runLoop.intervals(), std::vector<uint64>{50});
    }
    Texts expected = doubles::onThisSystem(
        {"runLoop.unregisterTimer()", "library.setControllerInterface(null)"});
    const auto before = expected.size();
    for (const auto* observer : library->liveObservers()) {
        const auto id = std::to_string(observer->id());
        expected.push_back("library.removeObserver(" + id + ")");
        expected.push_back("observer(" + id + ").destroy()");
    }
    ASSERT_EQ(expected.size(), before + 2u * 225u);
    expected.emplace_back("library.destroy()");
    trace.clear();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(host.runLoop.intervals(), IsEmpty());
    EXPECT_EQ(trace.textsOf({"library.", "observer(", "runLoop."}), expected);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, LeavesTheHostsMixerBetweenTheInterfaceAndTheObservers)
{
    ASSERT_EQ(initialize(), kResultOk);
    trace.clear();
    EXPECT_EQ(controller->terminate(), kResultOk);
    const auto texts = trace.texts();
    const auto at = [&](const std::string& beginning) {
        return std::find_if(texts.begin(), texts.end(), [&](const std::string& text) {
            return text.compare(0, beginning.size(), beginning) == 0;
        });
    };
    EXPECT_LT(at("library.setControllerInterface(null)"), at("updateHandler.removeDependent("));
    EXPECT_LT(at("updateHandler.removeDependent("), at("library.removeObserver("));
    EXPECT_NE(at("library.removeObserver("), texts.end());
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, GivesObserversTheControllerAsOwner)
{
    ASSERT_EQ(initialize(), kResultOk);
    const auto observers = library->liveObservers();
    ASSERT_EQ(observers.size(), 225u);
    for (const auto* observer : observers) {
        EXPECT_EQ(observer->arguments.owner, observers[0]->arguments.owner);
        EXPECT_NE(observer->arguments.owner, nullptr);
        EXPECT_NE(observer->arguments.valueChanged, nullptr);
        EXPECT_NE(observer->arguments.beginEdit, nullptr);
        EXPECT_NE(observer->arguments.endEdit, nullptr);
    }
    EXPECT_EQ(library->registered.size(), 225u);
    controller->terminate();
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, TakesALibraryWhoseEntryPointsStoreNothing)
{
    library->storesConnection = false;
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.textsOf({"library."}), ElementsAre("library.getVSTEditorConnectObject()"));

    library->storesConnection = true;
    library->storesObservers = false;
    EXPECT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->getParameterCount(), 225);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, FailsWhenTheConnectionEntryPointThrows)
{
    library->throwAt("getVSTEditorConnectObject");
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(controller->getParameterCount(), 0);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.textsOf({"library."}), ElementsAre("library.getVSTEditorConnectObject()"));
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, SurvivesALibraryThatThrowsAtEachLifeCycleCall)
{
    for (const char* call :
         {"setControllerInterface", "setHostType", "start", "addObserver", "getVSTObserverObject",
          "getParameterStepCount", "parametersReady", "setEffectInterface", "setEffectOption",
          "removeObserver", "observer("}) {
        library->throwAt(call);
        EXPECT_EQ(initialize(), kResultOk) << call;
        startProcessor();
        stopProcessor();
        EXPECT_EQ(controller->terminate(), kResultOk) << call;
        library->clearFaults();
    }
    releaseComponents();
    EXPECT_THAT(host.ledger(), IsEmpty());
    EXPECT_FALSE(library.closeAndAskWhetherStillLoaded());
}

TEST_F(LibraryBinding, ClosesALibraryWhoseEndThrows)
{
    library->throwAt("destroy");
    EXPECT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, DoesNotLetTheProcessorKeepALibraryThatIsGone)
{
    ASSERT_EQ(initialize(), kResultOk);
    startProcessor();
    trace.clear();
    EXPECT_EQ(controller->terminate(), kResultOk); // the host forgot to disconnect
    EXPECT_EQ(trace.count("library.setEffectInterface(null)"), 1u);
    component->terminate();
    EXPECT_FALSE(isLeftLoaded());
}

class RefusingService : public LibraryBinding {
protected:
    doubles::Trace serviceTrace;
    doubles::ScriptedLibrary serviceLibrary{serviceTrace};

    void SetUp() override
    {
        LibraryBinding::SetUp();
        host.service.offer(&serviceLibrary, library.handle());
    }
};

TEST_F(RefusingService, FallsBackToTheLibraryAndIsReleased)
{
    host.service.registerResult = kResultFalse;
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).getService()", "service.registerPlugin(object)",
                            "library.getVSTEditorConnectObject()",
                            "library.setControllerInterface(object)", "library.setHostType(0)",
                            "library.start()", kGiveBack, "library.setControllerInterface(null)",
                            "library.destroy()"));
    EXPECT_THAT(serviceTrace.texts(), IsEmpty());
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(RefusingService, ThatThrowsFallsBackToo)
{
    host.throwAt("registerPlugin");
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_EQ(trace.count("library.destroy()"), 1u);
    EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 0u);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(RefusingService, ThatSetsNoConnectionFallsBackToo)
{
    host.service.connection = nullptr;
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_EQ(trace.count("library.attachService()"), 0u);
    EXPECT_EQ(trace.count("library.detachService()"), 0u);
    EXPECT_EQ(trace.count("library.destroy()"), 1u);
    EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 0u);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(RefusingService, WhoseComponentDoesNotStartFallsBackToo)
{
    host.service.offersPluginBase = true;
    host.service.initializeResult = kResultFalse;
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).initialize(context)", kGiveBack,
                            "library.getVSTEditorConnectObject()",
                            "library.setControllerInterface(object)", "library.setHostType(0)",
                            "library.start()", "library.setControllerInterface(null)",
                            "library.destroy()"));
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(RefusingService, WithoutGetterFallsBackToo)
{
    host.service.offersGetter = false;
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_EQ(trace.count("library.destroy()"), 1u);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(RefusingService, GetterWithoutServiceMakesTheLibraryStayAsAServicesOwn)
{
    host.service.givesService = false;
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).getService()",
                            "library.getVSTEditorConnectObject()",
                            "library.setControllerInterface(object)", "library.setHostType(0)",
                            "library.start()", kGiveBack, "library.setControllerInterface(null)",
                            "library.detachService()"));
    EXPECT_EQ(trace.count("library.destroy()"), 0u);
    EXPECT_TRUE(isLeftLoaded());
    closeLibrary();
}

TEST_F(RefusingService, NullHandleLoadsTheLibraryWhichStaysAsAServicesOwn)
{
    host.service.libraryHandle = nullptr;
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(serviceTrace.texts(), ElementsAre("library.attachService()"));
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).getService()", "service.registerPlugin(object)",
                            "library.getVSTEditorConnectObject()",
                            "library.setControllerInterface(object)", "library.setHostType(0)",
                            "library.start()", kGiveBack, "library.setControllerInterface(null)",
                            "library.detachService()", "service.unregisterPlugin(object)"));
    EXPECT_TRUE(isLeftLoaded());
    closeLibrary();
}

TEST_F(RefusingService, BindingBeginsAsAServicesAgainAfterTerminate)
{
    doubles::ScriptedLibrary first(trace); // the one that ends
    library->connectionFor = [&first] { return &first; };
    host.service.registerResult = kResultFalse;
    ASSERT_EQ(initialize(), kResultOk);
    controller->terminate();
    ASSERT_EQ(trace.count("library.destroy()"), 1u);

    trace.clear();
    library->connectionFor = nullptr;
    host.service.givesService = false;
    ASSERT_EQ(initialize(), kResultOk);
    controller->terminate();
    EXPECT_EQ(trace.count("library.start()"), 1u);
    EXPECT_EQ(trace.count("library.detachService()"), 1u);
    EXPECT_EQ(trace.count("library.destroy()"), 0u);
    EXPECT_TRUE(isLeftLoaded());
    closeLibrary();
}

TEST_F(RefusingService, BindingIsChosenAnewAfterTerminate)
{
    ASSERT_EQ(initialize(), kResultOk);
    controller->terminate();
    EXPECT_EQ(serviceTrace.count("library.detachService()"), 1u);
    EXPECT_EQ(trace.count("library.getVSTEditorConnectObject()"), 0u);
    EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 1u);

    serviceTrace.clear();
    trace.clear();
    host.service.registerResult = kResultFalse;
    ASSERT_EQ(initialize(), kResultOk);
    controller->terminate();
    EXPECT_THAT(serviceTrace.texts(), IsEmpty());
    EXPECT_EQ(trace.count("library.start()"), 1u);
    EXPECT_EQ(trace.count("library.destroy()"), 1u);
    EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 0u);
    EXPECT_FALSE(isLeftLoaded());
}

} // namespace
