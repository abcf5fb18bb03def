// Messages that the controller would not send, and a host that passes messages on itself.
#include "editorlib/VstIEditorConnect.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "tests/doubles/MessageDouble.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::Each;
using testing::ElementsAre;

class HostileMessages : public Scenario {
public:
    void setUp() override
    {
        world.create();
        world.initialize();
        message = &world.host.getBooks().make<doubles::MessageDouble>("message");
    }

    void tearDown() override
    {
        world.terminate();
        world.release();
    }

    void act() override
    {
        world.trace.clear();
        results.clear();
        const FUnknownPtr<IAudioProcessor> processor(world.component);
        ProcessSetup setup{kRealtime, kSample32, 64, 44100};
        processor->setupProcessing(setup);
        const VstIEditorConnect* none = nullptr;
        const VstIEditorConnect* library = &world.library;
        send("null", nullptr);
        set("TextMessage", "Text", &library, sizeof(library));
        send("unknown", message);
        set(kConnect, "OTHER_ID", &library, sizeof(library));
        send("without attribute", message);
        set(kConnect, kAddress, &library, sizeof(library) - 1);
        send("short", message);
        set(kConnect, kAddress, &none, sizeof(none));
        send("no library", message);
        set(kConnect, kAddress, &library, sizeof(library));
        send("connect", message);
        message->makeUp("VST_ISUNICODE_HOST_MESSAGE_ID", "VST_ISUNICODE_HOST_BINARY_ID", 1);
        world.library.latencyMode = 2;
        send("Unicode", message);
        world.step("getLatencySamples", [&] { latency = processor->getLatencySamples(); });
        message->makeUp("VST_DISCONNECT_MESSAGE_ID", "VST_DISCONNECT_BINARY_ID", 0);
        send("disconnect", message);
        send("disconnect again", message);
    }

    void expectDone() override
    {
        EXPECT_THAT(results, Each(kResultOk));
        EXPECT_THAT(world.calls({"library.setEffect"}),
                    ElementsAre("library.setEffectInterface(object)",
                                "library.setEffectOption(false)",
                                "library.setEffectInterface(null)"));
        EXPECT_EQ(latency, 220u);
    }

    /** A message without its ID or attribute changes nothing. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_THAT(results, Each(kResultOk));
        const bool isLost = fault.in("connect") && !fault.isLibraryFailure();
        EXPECT_EQ(world.trace.count("library.setEffectInterface(object)"), isLost ? 0u : 1u);
        EXPECT_EQ(world.trace.count("library.setEffectInterface(null)"), isLost ? 0u : 1u);
        EXPECT_EQ(world.library.effect, nullptr);
        if (fault.hit("getLatencyMode")) {
            EXPECT_EQ(latency, fault.is(Kind::kLibraryAnswers) ? 44u : 0u);
        } else if (!fault.in("Unicode") || !fault.hit("getMessageID")) { // called more than once
            EXPECT_EQ(latency, isLost || fault.in("Unicode") ? 0u : 220u);
        }
    }

    /** Any number but 0 says that the host has Unicode. */
    void expectBelieved(const Fault& fault) override
    {
        EXPECT_THAT(results, Each(kResultOk));
        const bool isLost = fault.in("connect");
        EXPECT_EQ(world.trace.count("library.setEffectInterface(object)"), isLost ? 0u : 1u);
        EXPECT_EQ(world.library.effect, nullptr);
        if (fault.in("Unicode") && fault.hit("getInt")) {
            EXPECT_EQ(latency, 220u);
        }
    }

private:
    static constexpr auto kConnect = "VST_CONNECT_MESSAGE_ID";
    static constexpr auto kAddress = "VST_CONNECT_BINARY_ID";

    /** Fills the message. These calls do not count as calls that can fail. */
    void set(const char* id, const char* attribute, const void* data, size_t size) const
    {
        message->makeUp(id, attribute, data, static_cast<uint32>(size));
    }

    void send(const char* name, IMessage* sent)
    {
        world.step(name, [&] { results.push_back(world.processorPoint()->notify(sent)); });
    }

    doubles::MessageDouble* message = nullptr;
    std::vector<tresult> results;
    uint32 latency = 0;
};

/** The host connects each component to an object of its own, which passes messages on. */
class HostInBetween : public Scenario {
public:
    void setUp() override
    {
        world.create();
        world.initialize();
        world.host.peer.forwardTo = world.processorPoint();
    }

    void tearDown() override
    {
        world.host.peer.forwardTo = nullptr;
        world.terminate();
        world.release();
    }

    void act() override
    {
        world.trace.clear();
        world.host.peer.received.clear();
        const auto controller = world.controllerPoint();
        connected = disconnected = strange = -1;
        world.step("connect", [&] { connected = controller->connect(&world.host.peer); });
        world.step("stranger", [&] { strange = controller->disconnect(world.processorPoint()); });
        world.step("disconnect", [&] { disconnected = controller->disconnect(&world.host.peer); });
    }

    void expectDone() override
    {
        EXPECT_EQ(connected, kResultOk);
        EXPECT_EQ(strange, kResultFalse);
        EXPECT_EQ(disconnected, kResultOk);
        EXPECT_THAT(world.calls({"peer.notify"}),
                    ElementsAre("peer.notify(VST_CONNECT_MESSAGE_ID)",
                                "peer.notify(VST_ISUNICODE_HOST_MESSAGE_ID)",
                                "peer.notify(VST_DISCONNECT_MESSAGE_ID)",
                                "peer.notify(VST_DISCONNECT_MESSAGE_ID)"));
        EXPECT_EQ(world.library.effect, nullptr);
    }

    /** connect fails if a message was not delivered. A message that the host does not make is left
        out, which is no failure. */
    void expectStated(const Fault& fault) override
    {
        EXPECT_EQ(strange, kResultFalse);
        EXPECT_EQ(disconnected, kResultOk);
        EXPECT_EQ(world.trace.count("library.parametersReady()"), 1u);
        if (!fault.in("connect")) {
            EXPECT_EQ(connected, kResultOk);
        } else if (fault.hit("peer.notify")) {
            EXPECT_EQ(connected, kResultFalse);
            if (fault.hit("peer.notify(VST_CONNECT")) {
                EXPECT_EQ(world.calls({"peer.notify(VST_ISUNICODE"}).size(), 0u);
            }
        } else if (fault.hit("createInstance") && fault.is(Kind::kHostAnswers)) {
            EXPECT_EQ(connected, kResultOk);
            EXPECT_EQ(world.calls({"peer.notify(VST_CONNECT", "peer.notify(VST_IS"}).size(), 0u);
        }
        expectLetGo(fault);
    }

    void expectBelieved(const Fault& fault) override
    {
        EXPECT_EQ(strange, kResultFalse);
        EXPECT_EQ(disconnected, kResultOk);
        expectLetGo(fault);
    }

private:
    /** Two messages disconnect the processor, so one of them may be lost. */
    void expectLetGo(const Fault& fault) const
    {
        if (!fault.is(Kind::kNoMoreMemory)) {
            EXPECT_EQ(world.library.effect, nullptr);
        }
    }

    tresult connected = -1;
    tresult strange = -1;
    tresult disconnected = -1;
};

TEST(Faults, NotifyWithHostileMessages)
{
    injectFaults<HostileMessages>("hostile messages");
}

TEST(Faults, ConnectToAnObjectOfTheHost)
{
    injectFaults<HostInBetween>("host in between", hostKinds());
}

} // namespace
} // namespace faults
