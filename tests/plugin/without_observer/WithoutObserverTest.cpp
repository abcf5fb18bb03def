// The library has no entry point for observers: there are parameters without observers.
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

class WithoutObserver : public plugin::PlugInFixture {
protected:
    doubles::LoadedLibrary library{trace};
};

TEST_F(WithoutObserver, InitializeBindsTheLibrary)
{
    ASSERT_TRUE(library);
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
    startProcessor();
    host.runLoop.tick();
    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.textsOf({"library.addObserver", "library.removeObserver",
                               "library.getVSTObserverObject", "observer("}),
                IsEmpty());
    EXPECT_EQ(trace.count("library.parametersReady()"), 1u);
    EXPECT_EQ(trace.count("library.destroy()"), 1u);
    releaseComponents();
    EXPECT_THAT(host.ledger(), IsEmpty());
    EXPECT_FALSE(library.closeAndAskWhetherStillLoaded());
}

} // namespace
