// The plug-in loads the scripted library from the fixed place. It records every call.
#include "tests/doubles/MacsCode.h"
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

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

    /** Releases the components. @return whether the plug-in still has the file loaded */
    bool isLeftLoaded()
    {
        releaseComponents();
        EXPECT_THAT(host.ledger(), IsEmpty());
        EXPECT_THAT(library->complaints(), IsEmpty());
        return library.closeAndAskWhetherStillLoaded();
    }
};

TEST_F(LibraryBinding, InitializeConnectAndTerminateCallTheLibraryInOrder)
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

TEST_F(LibraryBinding, TerminateEndsInOrder)
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
    ASSERT_EQ(expected.size(), before + size_t{2 * doubles::kParameters});
    expected.emplace_back("library.destroy()");
    trace.clear();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(host.runLoop.intervals(), IsEmpty());
    EXPECT_EQ(trace.textsOf({"library.", "observer(", "runLoop."}), expected);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(LibraryBinding, InitializeTakesALibraryWhoseEntryPointsStoreNothing)
{
    library->storesConnection = false;
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.textsOf({"library."}), ElementsAre("library.getVSTEditorConnectObject()"));

    library->storesConnection = true;
    library->storesObservers = false;
    EXPECT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
    EXPECT_EQ(controller->terminate(), kResultOk);
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

TEST_F(RefusingService, InitializeFallsBackToTheLibraryFile)
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

TEST_F(RefusingService, InitializeFallsBackWhenTheComponentDoesNotStart)
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

TEST_F(RefusingService, InitializeWithANullHandleLoadsTheFileAndTerminateLeavesItLoaded)
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
    doubles::LoadedLibrary::closeAll();
}

TEST_F(RefusingService, InitializeClosesAFileWhoseEntryPointThrows)
{
    host.service.libraryHandle = nullptr;
    library->throwAt("getVSTEditorConnectObject");
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(isLeftLoaded());
}

TEST_F(RefusingService, InitializeForgetsAfterTerminateWhoseLibraryItWas)
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
    doubles::LoadedLibrary::closeAll();
}

TEST_F(RefusingService, InitializeChoosesServiceOrFileAnewAfterTerminate)
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
