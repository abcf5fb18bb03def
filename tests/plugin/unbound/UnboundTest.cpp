// There is no usable library: no file, one without the entry point, or one that gives null. Each of
// the three has a program of its own.
#include "tests/doubles/InProcessLibrary.h"
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class Unbound : public plugin::PlugInFixture {
protected:
    doubles::LoadedLibrary library{trace}; ///< false in the program without a file

    /** Nothing of the library but its entry point was called. */
    void expectNothingCalled() const
    {
        EXPECT_THAT(trace.textsOf({"library.", "observer("}),
                    Each(std::string("library.getVSTEditorConnectObject()")));
    }

    void TearDown() override
    {
        if (controller)
            releaseComponents();
        EXPECT_THAT(host.ledger(), IsEmpty());
        EXPECT_FALSE(library.closeAndAskWhetherStillLoaded()) << "the plug-in left it loaded";
    }
};

TEST_F(Unbound, InitializeFailsEachTimeAndTerminateCallsNothing)
{
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(controller->getParameterCount(), 0);
    EXPECT_THAT(host.runLoop.intervals(), IsEmpty());
    EXPECT_THAT(host.updates.observed(), IsEmpty());
    expectNothingCalled();
    trace.clear();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(trace.textsOf({"library.", "observer(", "runLoop.", "service."}), IsEmpty());
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_EQ(controller->terminate(), kResultOk);
    expectNothingCalled();
}

TEST_F(Unbound, ProcessAndStateCallNothing)
{
    EXPECT_EQ(initialize(), kResultFalse);
    startProcessor();
    auto processor = FUnknownPtr<IAudioProcessor>(component);
    ProcessData data;
    EXPECT_EQ(component->setActive(true), kResultOk);
    EXPECT_EQ(processor->process(data), kResultOk);
    EXPECT_EQ(processor->getLatencySamples(), 0u);
    EXPECT_EQ(component->getState(nullptr), kResultFalse);
    EXPECT_EQ(component->setState(nullptr), kResultOk);
    EXPECT_EQ(controller->setState(nullptr), kResultOk);
    EXPECT_EQ(controller->setParamNormalized(doubles::kVolume1, 0.5), kResultFalse);
    stopProcessor();
    expectNothingCalled();
    EXPECT_EQ(controller->terminate(), kResultOk);
}

TEST_F(Unbound, InitializeForgetsAServicesConnectionWithoutHandle)
{
    doubles::Trace serviceTrace;
    doubles::ScriptedLibrary serviceLibrary(serviceTrace);
    host.service.offer(&serviceLibrary, nullptr);
    EXPECT_EQ(initialize(), kResultFalse);
    EXPECT_THAT(serviceTrace.texts(), ElementsAre("library.attachService()"));
    startProcessor();
    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(serviceTrace.texts(), ElementsAre("library.attachService()"));
    EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 1u);
}

TEST_F(Unbound, InitializeForgetsARefusingServicesConnection)
{
    doubles::Trace serviceTrace;
    doubles::ScriptedLibrary serviceLibrary(serviceTrace);
    host.service.offer(&serviceLibrary, reinterpret_cast<void*>(16));
    host.service.registerResult = kResultFalse;
    EXPECT_EQ(initialize(), kResultFalse);
    startProcessor();
    stopProcessor();
    EXPECT_EQ(controller->terminate(), kResultOk);
    EXPECT_THAT(serviceTrace.texts(), IsEmpty());
    EXPECT_EQ(trace.count("service.unregisterPlugin(object)"), 0u);
}

TEST_F(Unbound, InitializeStillBindsAService)
{
    doubles::Trace serviceTrace;
    doubles::InProcessLibrary serviceLibrary(serviceTrace);
    host.service.offer(&serviceLibrary, serviceLibrary.handle());
    EXPECT_EQ(initialize(), kResultOk);
    EXPECT_EQ(serviceTrace.count("library.start()"), 1u);
    EXPECT_EQ(controller->terminate(), kResultOk);
}

} // namespace
