// Bound to the library file in its fixed place: the simulator, as it ships with this build.
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::IsEmpty;

class SimulatorBinding : public plugin::PlugInFixture {
protected:
    SimulatorBinding()
    : PlugInFixture(doubles::HostFamily::plain())
    {
    }

    static int32 hostTypeSeen()
    {
        auto* control = simulator();
        return control ? control->hostType() : -2;
    }
};

TEST_F(SimulatorBinding, InitializeLoadsTheFileAndTerminateUnloadsIt)
{
    EXPECT_FALSE(isLibraryLoaded());
    ASSERT_EQ(initialize(), kResultOk);
    EXPECT_TRUE(isLibraryLoaded());
    EXPECT_EQ(hostTypeSeen(), 2);
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
    startProcessor();
    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(isLibraryLoaded());
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
    EXPECT_TRUE(isLibraryLoaded());
    EXPECT_EQ(second->getParameterCount(), doubles::kParameters);
    EXPECT_EQ(hostTypeSeen(), 2);
    EXPECT_EQ(second->terminate(), kResultOk);
    EXPECT_FALSE(isLibraryLoaded());
    second = nullptr;
    releaseComponents();
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(SimulatorBinding, InitializeTakesANullContextMoreThanOnce)
{
    ASSERT_EQ(controller->initialize(nullptr), kResultOk);
    EXPECT_EQ(hostTypeSeen(), 2);
    EXPECT_EQ(controller->initialize(nullptr), kResultOk); // by the context it would know the first
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_FALSE(isLibraryLoaded());
}

} // namespace
