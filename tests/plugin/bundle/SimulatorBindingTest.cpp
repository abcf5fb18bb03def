// The plug-in loads the simulator from the editor library's fixed place.
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

#include "tools/common/LoadedSimulator.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::IsEmpty;
using tools::LibraryHandle;

class SimulatorBinding : public plugin::PlugInFixture {
protected:
    SimulatorBinding()
    : PlugInFixture(doubles::HostFamily::plain())
    {
    }

    static int32 hostTypeSeen()
    {
        auto* control = tools::findSimulator();
        return control ? control->hostType() : -2;
    }
};

TEST_F(SimulatorBinding, InitializeLoadsTheFileAndTerminateUnloadsIt)
{
    EXPECT_FALSE(LibraryHandle::isLoaded());
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_TRUE(LibraryHandle::isLoaded());
    EXPECT_EQ(hostTypeSeen(), 2);
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
    startProcessor();
    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(LibraryHandle::isLoaded());
    releaseComponents();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(SimulatorBinding, TerminateLeavesTheFileToTheOtherInstance)
{
    auto second = module->getFactory().createInstance<IEditController>(plugin::controllerID());
    ASSERT_TRUE(second);
    ASSERT_EQ(initialize(), kResultOk);
    ASSERT_EQ(second->initialize(&host.context), kResultOk);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_TRUE(LibraryHandle::isLoaded());
    EXPECT_EQ(second->getParameterCount(), doubles::kParameters);
    EXPECT_EQ(hostTypeSeen(), 2);
    EXPECT_EQ(second->terminate(), kResultOk);
    EXPECT_FALSE(LibraryHandle::isLoaded());
    second = nullptr;
    releaseComponents();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(SimulatorBinding, InitializeTakesANullContextMoreThanOnce)
{
    ASSERT_EQ(controller->initialize(nullptr), kResultOk);
    EXPECT_EQ(hostTypeSeen(), 2);
    // Without a context it cannot know that this is the second time.
    EXPECT_EQ(controller->initialize(nullptr), kResultOk);
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(LibraryHandle::isLoaded());
}

} // namespace
