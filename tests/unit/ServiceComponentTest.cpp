// FComponentPtr, which holds a component that the host's factory makes.
#include "editorlib/FComponentPtr.h"
#include "editorlib/IExtensionVSTServiceGetter.h"
#include "tests/doubles/ScriptedHost.h"

#include <gmock/gmock.h>

namespace {

using namespace Steinberg;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kID = "BBA9E2BA9E28483CAA608081B0166B85";

class FComponentPtrTest : public ::testing::Test {
protected:
    using Holder = FComponentPtr<IExtensionVSTServiceGetter>;

    doubles::Trace trace;
    doubles::ScriptedHost host{trace};

    void SetUp() override { host.service.makesComponent = true; }

    bool initialize(Holder& holder) { return holder.initialize(&host.context, "UID", kID); }

    /** The calls about the factory and its components. */
    std::vector<std::string> calls() const
    {
        return trace.textsOf({"hostClasses", "componentFactory", "component("});
    }
};

const std::string kFactoryAsked = "hostClasses.getHostInterface(IComponentFactory)";
const std::string kCreated =
    "componentFactory.createComponent(UID, BBA9E2BA9E28483CAA608081B0166B85)";
const std::string kComponentDestroyed = "componentFactory.destroyComponent(component(1))";

TEST_F(FComponentPtrTest, InitializeMakesAComponentThatTerminateHandsBack)
{
    {
        Holder holder;
        EXPECT_TRUE(initialize(holder));
        EXPECT_TRUE(holder);
        EXPECT_NE(holder.get(), nullptr);
        EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated));
        EXPECT_TRUE(holder.terminate(false));
        EXPECT_FALSE(holder);
        EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated, kComponentDestroyed));
        EXPECT_THAT(host.ledger(), IsEmpty());
    }
    EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated, kComponentDestroyed));
}

TEST_F(FComponentPtrTest, InitializeMakesNoSecondComponentWhileOneIsHeld)
{
    Holder holder;
    EXPECT_TRUE(initialize(holder));
    EXPECT_FALSE(initialize(holder));
    EXPECT_TRUE(holder);
    EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated));
}

TEST_F(FComponentPtrTest, InitializeMakesAnotherAfterTerminate)
{
    Holder holder;
    EXPECT_TRUE(initialize(holder));
    EXPECT_TRUE(holder.terminate(true));
    EXPECT_TRUE(initialize(holder));
    EXPECT_TRUE(holder.terminate(true));
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(FComponentPtrTest, InitializeAsksForTheFactoryOnce)
{
    Holder holder;
    host.service.makesComponent = false;
    EXPECT_FALSE(initialize(holder));
    host.service.makesComponent = true;
    EXPECT_TRUE(initialize(holder));
    EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated, kCreated));
}

TEST_F(FComponentPtrTest, InitializeFailsWithoutContextHostClassesOrFactory)
{
    Holder holder;
    EXPECT_FALSE(holder.initialize(nullptr, "UID", kID));
    host.hide(IHostClasses::iid);
    EXPECT_FALSE(initialize(holder));
    host.show(IHostClasses::iid);
    host.hide(IComponentFactory::iid);
    EXPECT_FALSE(initialize(holder));
    EXPECT_FALSE(holder);
    EXPECT_TRUE(holder.terminate(false));
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(FComponentPtrTest, InitializeHandsAComponentWithoutTheInterfaceBackAtOnce)
{
    host.service.offersGetter = false;
    Holder holder;
    EXPECT_FALSE(initialize(holder));
    EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated, kComponentDestroyed));
    EXPECT_TRUE(holder.terminate(true));
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(FComponentPtrTest, InitializeStartsWithTheHostContextAndTerminateStops)
{
    host.service.offersPluginBase = true;
    Holder holder;
    EXPECT_TRUE(initialize(holder));
    EXPECT_EQ(host.service.initializeContext, host.context.unknown());
    EXPECT_TRUE(holder.terminate(false));
    EXPECT_THAT(calls(), ElementsAre(kFactoryAsked, kCreated, "component(1).initialize(context)",
                                     "component(1).terminate()", kComponentDestroyed));
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(FComponentPtrTest, InitializeHandsBackUnstoppedWhatDoesNotStart)
{
    int made = 0;
    const auto expectGivenBack = [&](bool isStarted) {
        const std::string component = "component(" + std::to_string(++made) + ")";
        EXPECT_FALSE(initialize(*std::make_unique<Holder>()));
        std::vector<std::string> expected = {kFactoryAsked, kCreated};
        if (isStarted)
            expected.push_back(component + ".initialize(context)");
        expected.push_back("componentFactory.destroyComponent(" + component + ")");
        EXPECT_EQ(calls(), expected);
        EXPECT_THAT(host.ledger(), IsEmpty());
        host.clearFaults();
        trace.clear();
    };
    host.throwAt("query(component(1), IPluginBase)");
    expectGivenBack(false);
    host.service.offersPluginBase = true;
    host.throwAt("initialize");
    expectGivenBack(true);
    host.service.initializeResult = kResultFalse;
    expectGivenBack(true);
}

TEST_F(FComponentPtrTest, TerminateHandsBackAComponentThatThrowsWhenAskedWhetherItStops)
{
    Holder holder;
    initialize(holder);
    host.throwAt("query(component(1), IPluginBase)");
    EXPECT_FALSE(holder.terminate(false));
    EXPECT_TRUE(holder);
    EXPECT_TRUE(holder.terminate(true));
    EXPECT_FALSE(holder);
    EXPECT_EQ(trace.count(kComponentDestroyed), 1u);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(FComponentPtrTest, DestructorHandsBackOnceToAFactoryThatThrows)
{
    {
        Holder holder;
        initialize(holder);
        host.throwAt("destroyComponent");
    }
    EXPECT_EQ(trace.count(kComponentDestroyed), 1u);
    EXPECT_THAT(host.ledger(), ElementsAre("component(1): expected 0, is 1"));
}

TEST_F(FComponentPtrTest, TerminateKeepsAComponentThatDoesNotStopUnlessForced)
{
    host.service.offersPluginBase = true;
    host.service.terminateResult = kResultFalse;
    Holder holder;
    initialize(holder);
    trace.clear();
    EXPECT_FALSE(holder.terminate(false));
    EXPECT_TRUE(holder);
    EXPECT_THAT(calls(), ElementsAre("component(1).terminate()"));
    EXPECT_TRUE(holder.terminate(true));
    EXPECT_FALSE(holder);
    EXPECT_THAT(calls(), ElementsAre("component(1).terminate()", "component(1).terminate()",
                                     kComponentDestroyed));
    EXPECT_THAT(host.ledger(), IsEmpty());
}

TEST_F(FComponentPtrTest, DestructorHandsBackAComponentThatThrowsWhenStopped)
{
    host.service.offersPluginBase = true;
    {
        Holder holder;
        initialize(holder);
        host.throwAt("terminate");
    }
    EXPECT_EQ(trace.count(kComponentDestroyed), 1u);
    EXPECT_THAT(host.ledger(), IsEmpty());
}

} // namespace
