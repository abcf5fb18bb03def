// The plug-in uses the library of a host-side service and does not load the one in the fixed place.
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

#include "hostapi/IComponentFactory.h"
#include "hostapi/IHostClasses.h"
#include "tests/doubles/InProcessLibrary.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;
using tools::LibraryHandle;

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
        EXPECT_THAT(host.ledger(), IsEmpty());
        EXPECT_THAT(library.complaints(), IsEmpty());
        EXPECT_FALSE(library.isDestroyed());
    }
};

TEST_F(ServiceBinding, InitializeAndTerminateCallLibraryAndServiceInOrder)
{
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).getService()", "service.registerPlugin(object)",
                            "library.attachService()", "library.setControllerInterface(object)",
                            "library.setHostType(0)", "library.start()", kGiveBack));
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
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

TEST_F(ServiceBinding, InitializeLoadsNoLibraryFile)
{
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_FALSE(LibraryHandle::isLoaded());
    controller->terminate();
    EXPECT_FALSE(LibraryHandle::isLoaded());
}

TEST_F(ServiceBinding, TerminateDoesNotCloseTheServicesLibrary)
{
    doubles::Trace fileTrace;
    doubles::LoadedLibrary file(fileTrace, VSTK2X_SCRIPTED_LIBRARY);
    ASSERT_TRUE(file);
    LibraryHandle second(VSTK2X_SCRIPTED_LIBRARY);
    host.service.offer(&*file, file.handle());
    ASSERT_EQ(initialize(), kResultOk);
    controller->terminate();
    releaseComponents();

    // The file is open twice. If the plug-in had closed it once, this would unload it.
    second.close();
    EXPECT_TRUE(LibraryHandle::isLoaded(VSTK2X_SCRIPTED_LIBRARY));
    EXPECT_EQ(fileTrace.count("library.destroy()"), 0u);
    EXPECT_THAT(file->complaints(), IsEmpty());
    EXPECT_FALSE(file.closeAndAskWhetherStillLoaded()) << "the plug-in opened it once more";
}

TEST_F(ServiceBinding, InitializeStartsAndStopsAComponentThatOffersIt)
{
    host.service.offersPluginBase = true;
    host.service.terminateResult = kResultFalse; // is ignored
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_THAT(lifeCycle(),
                ElementsAre(kCreate, "component(1).initialize(context)",
                            "component(1).getService()", "service.registerPlugin(object)",
                            "library.attachService()", "library.setControllerInterface(object)",
                            "library.setHostType(0)", "library.start()", "component(1).terminate()",
                            kGiveBack));
    controller->terminate();
}

TEST_F(ServiceBinding, InitializeTakesTheLibraryFileWithoutAComponentFactory)
{
    host.hide(IComponentFactory::iid);
    ASSERT_EQ(initialize(), kResultOk); // by the library in the fixed place
    EXPECT_TRUE(LibraryHandle::isLoaded());
    EXPECT_THAT(lifeCycle(), IsEmpty());
    controller->terminate();
    EXPECT_FALSE(LibraryHandle::isLoaded());
}

} // namespace
