// Hosts that end the components in another way than disconnect and terminate.
#include "editorlib/VstIControllerInterface.h"
#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "tests/doubles/Parameters.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::HostFamily;
using testing::IsEmpty;

/** Starts the components without faults; what follows, up to the last release, has them. Whatever
    fails, at the end the library has no controller and no observer of the plug-in, and was
    destroyed once for each start. */
class Ending : public Scenario {
public:
    explicit Ending(const HostFamily& family = HostFamily::cubase("7.5.1"),
                    Binding bound = Binding::kLibrary)
    : Scenario(family, bound)
    {
    }

    void setUp() override { beginAnew(); }
    void tearDown() override {}

    void act() override
    {
        if (!world.controller)
            beginAnew();
        goOn();
    }

    virtual void begin() { world.start(); }
    virtual void goOn() = 0;

    void expectDone() override
    {
        EXPECT_EQ(world.initializeResult, kResultOk);
        EXPECT_EQ(world.terminateResult, kResultOk);
        EXPECT_EQ(world.calls({"library.start()"}).size(), starts);
        EXPECT_EQ(world.calls({"library.destroy()"}).size(), ends);
        EXPECT_EQ(world.library.controller, nullptr);
        EXPECT_EQ(world.library.effect, nullptr);
        EXPECT_THAT(world.library.liveObservers(), IsEmpty());
    }

    void expectStated(const Fault& fault) override
    {
        EXPECT_EQ(world.library.controller, nullptr);
        const bool notGiven = fault.hit("getVSTEditorConnectObject");
        const auto ended = world.calls({"library.destroy()"}).size();
        EXPECT_TRUE(ended == ends || notGiven || fault.isOutOfMemory());
        if (!fault.hit(".destroy()")) {
            EXPECT_THAT(world.library.liveObservers(), IsEmpty());
        }
        if (fault.hit("removeObserver") || fault.hit("addObserver"))
            world.library.registered.clear();
        EXPECT_THAT(world.library.registered, testing::Each(nullptr));
        world.library.registered.clear();
        if (!fault.isOutOfMemory()) { // without memory there may be no controller at all
            EXPECT_EQ(world.terminateResult, kResultOk);
        }
    }

    void expectBelieved(const Fault& fault) override { expectStated(fault); }

    void expectEnded(const Fault&) override
    {
        EXPECT_FALSE(world.file->closeAndAskWhetherStillLoaded());
    }

protected:
    size_t starts = 1;
    size_t ends = 1;

private:
    void beginAnew()
    {
        world.trace.clear();
        world.library.revive();
        world.initializeResult = world.terminateResult = kResultFalse;
        begin();
    }
};

/** A host that does not disconnect, and processes another block after terminate. */
class StillConnected : public Ending {
public:
    void goOn() override
    {
        world.terminate();
        FUnknownPtr<IAudioProcessor> processor(world.component);
        ProcessData none;
        world.step("process", [&] { processor->process(none); });
        processor = nullptr;
        world.release();
    }
};

/** The second initialize fails and changes nothing. */
class InitializedTwice : public Ending {
public:
    void goOn() override
    {
        auto& context = world.host.context;
        world.trace.clear();
        world.step("initialize",
                   [&] { EXPECT_EQ(world.component->initialize(&context), kResultFalse); });
        world.step("initialize",
                   [&] { EXPECT_EQ(world.controller->initialize(&context), kResultFalse); });
        EXPECT_THAT(world.trace.texts(), IsEmpty()) << "a second initialize called somebody";
        EXPECT_EQ(world.controller->getParameterCount(), doubles::kParameters);
        starts = 0; // since the trace was cleared
        world.end();
    }
};

class TerminatedTwice : public Ending {
public:
    void goOn() override
    {
        world.disconnect();
        world.terminate();
        world.terminate();
        world.release();
    }
};

class NeverInitialized : public Ending {
public:
    NeverInitialized() { starts = ends = 0; }

    void begin() override {}

    void goOn() override
    {
        world.create();
        world.connect();
        world.disconnect();
        world.terminate();
        world.release();
        world.initializeResult = kResultOk;
    }
};

class BackAfterTerminate : public Ending {
public:
    BackAfterTerminate() { starts = ends = 2; }

    void goOn() override
    {
        world.disconnect();
        world.terminate();
        world.library.revive();
        world.initialize();
        world.connect();
        world.end();
    }
};

class Reconnected : public Ending {
public:
    void goOn() override
    {
        world.disconnect();
        world.connect();
        world.end();
    }

    void expectDone() override
    {
        Ending::expectDone();
        EXPECT_EQ(world.trace.count("library.setEffectInterface(object)"), 2u);
        EXPECT_EQ(world.trace.count("library.setEffectInterface(null)"), 2u);
        EXPECT_EQ(world.trace.count("library.parametersReady()"), 2u);
    }
};

/** The host closes the editor's window after terminate. */
class ViewOutlives : public Ending {
public:
    void goOn() override
    {
        IPtr<IPlugView> view;
        world.step("createView",
                   [&] { view = owned(world.controller->createView(ViewType::kEditor)); });
        int window = 0;
        world.step("attached", [&] { view->attached(&window, kPlatformTypeNSView); });
        world.disconnect();
        world.terminate();
        const auto calls = world.calls({"library."}).size();
        world.step("onFocus", [&] { EXPECT_EQ(view->onFocus(1), kResultOk); });
        world.step("onKeyDown", [&] { EXPECT_EQ(view->onKeyDown('a', 0, 0), kResultFalse); });
        world.step("onWheel", [&] { EXPECT_EQ(view->onWheel(1), kResultFalse); });
        world.step("removed", [&] { EXPECT_EQ(view->removed(), kResultOk); });
        EXPECT_EQ(world.calls({"library."}).size(), calls)
            << "a view used the library after terminate";
        world.step("release", [&] { view = nullptr; });
        world.release();
    }
};

/** The host ends the components while they use a port and observe a track. */
class InTheMiddle : public Ending {
public:
    InTheMiddle()
    : Ending(HostFamily::cubase("7.4.0"))
    {
        world.host.ports.audioInput("A", "Tavrin 1");
        world.host.devices.addMidiTrack("Piano", kRoutedHere, 3);
    }

    void goOn() override
    {
        world.step("select", [&] { world.host.devices.select(0); });
        const char* taken[] = {"A", nullptr, nullptr, nullptr};
        world.step("take", [&] { world.library.controller->setAudioPortList(taken); });
        world.end();
    }

    void expectStated(const Fault& fault) override
    {
        Ending::expectStated(fault);
        expectShown(fault);
        world.host.ports.list.front()->displayed = true;
        world.host.updates.forgetDependents();
    }

    void expectDone() override
    {
        Ending::expectDone();
        EXPECT_TRUE(world.host.ports.list.front()->displayed);
        EXPECT_THAT(world.calls({"library.syncPart"}),
                    testing::ElementsAre("library.syncPartToMidiChannel(3)"));
        EXPECT_EQ(world.calls({"updateHandler.removeDependent"}).size(), 4u);
    }

private:
    /** The host shows the port again, unless it failed at that or at finding the port. */
    void expectShown(const Fault& fault) const
    {
        const bool cannot = fault.hit("setDisplayed(true)") || fault.hit("findPortById") ||
                            fault.hit("IPortRegistry") || fault.hit("IHostClasses");
        EXPECT_TRUE(cannot || world.host.ports.list.front()->displayed);
    }
};

class NoHostContext : public Ending {
public:
    void begin() override { world.create(); }

    void goOn() override
    {
        world.step("initialize", [&] { world.component->initialize(nullptr); });
        world.step("initialize",
                   [&] { world.initializeResult = world.controller->initialize(nullptr); });
        world.connect();
        world.end();
    }

    /** Only a host makes messages, so without one the processor is not told of the library. */
    void expectDone() override
    {
        Ending::expectDone();
        EXPECT_EQ(world.trace.count("library.setEffectInterface(object)"), 0u);
        EXPECT_EQ(world.trace.count("library.setHostType(2)"), 1u);
    }
};

TEST(FaultsAtTheEnd, TerminateWhileConnected)
{
    injectFaults<StillConnected>("ended while connected", hostKinds());
}

TEST(FaultsAtTheEnd, InitializeTwice)
{
    injectFaults<InitializedTwice>("initialized twice", hostKinds());
}

TEST(FaultsAtTheEnd, TerminateTwice)
{
    injectFaults<TerminatedTwice>("terminated twice", hostKinds());
}

TEST(FaultsAtTheEnd, TerminateWithoutInitialize)
{
    injectFaults<NeverInitialized>("never initialized");
}

TEST(FaultsAtTheEnd, InitializeAfterTerminate)
{
    injectFaults<BackAfterTerminate>("back after terminate",
                                     {Kind::kHostAnswers, Kind::kHostThrows});
}

TEST(FaultsAtTheEnd, ConnectAfterDisconnect)
{
    injectFaults<Reconnected>("reconnected", hostKinds());
}

TEST(FaultsAtTheEnd, ViewCallsAfterTerminate)
{
    injectFaults<ViewOutlives>("view outlives its controller", hostKinds());
}

TEST(FaultsAtTheEnd, TerminateWithAPortAndATrack)
{
    auto kinds = hostKinds();
    kinds.push_back(Kind::kNoMemory);
    injectFaults<InTheMiddle>("ended with ports and a track", kinds);
}

TEST(FaultsAtTheEnd, InitializeWithoutAHostContext)
{
    injectFaults<NoHostContext>("no host context", {Kind::kNoMemory});
}

} // namespace
} // namespace faults
