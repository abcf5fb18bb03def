// What the controller does with host and library in initialize and terminate, in order.
#include "tests/unit/BoundController.h"

#include <algorithm>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

bool begins(const std::string& text, const std::string& prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

/** The recorded calls with these prefixes. Calls about observers in a row are one entry,
    "observers". Of several releases of an object only the last is kept, since a smart pointer that
    is passed on takes and releases a reference as well. */
Texts milestones(const Trace& trace, Texts prefixes)
{
    const Texts observers = {"library.getVSTObserverObject", "library.addObserver",
                             "library.removeObserver", "observer("};
    prefixes.insert(prefixes.end(), observers.begin(), observers.end());
    Texts result;
    for (const auto& text : trace.textsOf(prefixes)) {
        const bool isObserver =
            std::any_of(observers.begin(), observers.end(),
                        [&](const std::string& observer) { return begins(text, observer); });
        const std::string release = ".release()";
        if (text.size() > release.size() &&
            text.compare(text.size() - release.size(), release.size(), release) == 0)
            result.erase(std::remove(result.begin(), result.end(), text), result.end());
        if (!isObserver)
            result.push_back(text);
        else if (result.empty() || result.back() != "observers")
            result.emplace_back("observers");
    }
    return result;
}

TEST(ControllerLife, InitializeGoesInOrder)
{
    BoundController bound;
    CPluginFactory factory{PFactoryInfo()};
    factory.setHostContext(&bound.host.context);
    bound.trace.clear();
    EXPECT_EQ(bound.controller->initialize(&bound.host.context), kResultOk);
    const std::string create =
        "componentFactory.createComponent(UID, BBA9E2BA9E28483CAA608081B0166B85)";
    EXPECT_THAT(
        milestones(bound.trace,
                   {"componentFactory.", "component(", "service.", "library.attachService",
                    "library.setControllerInterface", "library.setHostType", "library.start",
                    "hostApplicationW.getVersionString", "runLoop.", "deviceList.",
                    "device(Mixer).", "updateHandler."}),
        ElementsAreArray(onThisSystem(
            {create, "component(1).getService()", "service.registerPlugin(object)",
             "library.attachService()", "library.setControllerInterface(object)",
             "hostApplicationW.getVersionString()", "library.setHostType(0)", "library.start()",
             "runLoop.registerTimer(50)", "observers", "hostApplicationW.getVersionString()",
             "deviceList.findDevice(Mixer, 0)", "device(Mixer).getValue(selected)",
             "updateHandler.addDependent(device(Mixer))",
             "updateHandler.addDependent(value(Mixer.selected))",
             "componentFactory.destroyComponent(component(1))"})));
    EXPECT_EQ(bound.controller->terminate(), kResultOk);
    factory.setHostContext(nullptr);
}

TEST(ControllerLife, TerminateGoesInOrderAndReleasesTheHostsObjectsLast)
{
    BoundController bound;
    auto& piano = bound.host.devices.addMidiTrack("Piano", "Synth 1", 3);
    bound.host.devices.addInstrument("Synth 1", "RDL3/RDL5 VST", &piano);
    bound.host.ports.audioInput("A", "Tavrin 1");
    bound.initialize();
    const char* ports[] = {"A", nullptr, nullptr, nullptr};
    bound.library.controller->setAudioPortList(ports);
    bound.host.devices.select(0);
    ASSERT_THAT(bound.host.updates.observed(),
                ElementsAre("device(Mixer)", "value(Mixer.selected)", "value(Piano.output)",
                            "value(Piano.channel)"));

    bound.trace.clear();
    bound.host.traceReferences();
    EXPECT_EQ(bound.controller->terminate(), kResultOk);
    EXPECT_THAT(
        milestones(bound.trace,
                   {"runLoop.unregisterTimer", "library.set", "library.detachService",
                    "library.destroy", "updateHandler.removeDependent", "value(Mixer.selected).rel",
                    "value(Piano.output).rel", "value(Piano.channel).rel", "device(Mixer).rel",
                    "portRegistry.findPortById", "port(A).setDisplayed", "service.",
                    "context.release", "portRegistry.release", "updateHandler.release",
                    "hostClasses.release"}),
        ElementsAreArray(onThisSystem(
            {"runLoop.unregisterTimer()", "library.setControllerInterface(null)",
             "library.detachService()", "updateHandler.removeDependent(value(Mixer.selected))",
             "value(Mixer.selected).release()", "updateHandler.removeDependent(device(Mixer))",
             "updateHandler.removeDependent(value(Piano.output))", "value(Piano.output).release()",
             "updateHandler.removeDependent(value(Piano.channel))",
             "value(Piano.channel).release()", "portRegistry.findPortById(A)",
             "port(A).setDisplayed(true)", "observers", "service.unregisterPlugin(object)",
             "service.release()", "context.release()", "portRegistry.release()",
             "updateHandler.release()", "hostClasses.release()"})));
}

TEST(ControllerLife, SetComponentHandlerTakesOneThatThrowsWhenAskedForItsExtensions)
{
    BoundController bound;
    bound.initialize();
    bound.controller->setComponentHandler(nullptr);
    bound.host.throwAt("query(host, IComponentHandler2)");
    EXPECT_NO_THROW(
        EXPECT_EQ(bound.controller->setComponentHandler(&bound.host.handler), kResultTrue));
    bound.host.clearFaults();
    bound.trace.clear();
    bound.controller->changeLatencyTrigger();
    EXPECT_THAT(bound.trace.textsOf({"host."}), ElementsAre("host.restartComponent(8)"));
}

TEST(ControllerLife, InitializeFailsUntilTerminateAfterABindingThatFailed)
{
    for (const bool withContext : {false, true}) {
        SCOPED_TRACE(withContext ? "first with a context" : "first without one");
        BoundController bound;
        bound.host.service.makesComponent = false;
        FUnknown* first = withContext ? static_cast<FUnknown*>(&bound.host.context) : nullptr;
        EXPECT_EQ(bound.controller->initialize(first), kResultFalse);
        bound.host.service.makesComponent = true;
        bound.trace.clear();
        bound.host.traceReferences();
        for (FUnknown* context :
             {static_cast<FUnknown*>(nullptr), static_cast<FUnknown*>(&bound.host.context),
              static_cast<FUnknown*>(nullptr)})
            EXPECT_EQ(bound.controller->initialize(context), kResultFalse);
        EXPECT_THAT(bound.trace.texts(), IsEmpty());
        EXPECT_EQ(bound.controller->getEditorConnection(), nullptr);

        EXPECT_EQ(bound.controller->terminate(), kResultOk);
        EXPECT_EQ(bound.controller->initialize(&bound.host.context), kResultOk);
        EXPECT_EQ(bound.controller->getParameterCount(), kParameters);
    }
}

TEST(ControllerLife, TerminateTellsAPeerThatIsStillConnectedOnceTheTimerHasStopped)
{
    BoundController bound;
    bound.initialize();
    EXPECT_EQ(bound.controller->connect(&bound.host.peer), kResultOk);
    bound.trace.clear();
    bound.host.traceQueries();
    EXPECT_EQ(bound.controller->terminate(), kResultOk);
    auto calls = bound.trace.texts();
    // Leaves out the calls by which the host makes the message.
    const auto isOfTheMessage = [](const std::string& text) {
        return begins(text, "message(") || begins(text, "context.createInstance(") ||
               text == "query(context, IHostApplication)";
    };
    calls.erase(std::remove_if(calls.begin(), calls.end(), isOfTheMessage), calls.end());
    const auto expected =
        onThisSystem({"runLoop.unregisterTimer()", "peer.notify(VST_DISCONNECT_MESSAGE_ID)",
                      "query(context, IHostClasses)", "library.setControllerInterface(null)"});
    ASSERT_GT(calls.size(), expected.size());
    calls.resize(expected.size());
    EXPECT_EQ(calls, expected);
}

TEST(ControllerLife, TerminateEndsTheLibraryThoughAPeerThatIsStillConnectedThrows)
{
    BoundController bound;
    bound.initialize();
    EXPECT_EQ(bound.controller->connect(&bound.host.peer), kResultOk);
    bound.trace.clear();
    bound.host.throwAt("peer.disconnect");
    tresult result = kResultOk;
    EXPECT_NO_THROW(result = bound.controller->terminate());
    EXPECT_EQ(result, kResultFalse);
    EXPECT_EQ(bound.trace.count("service.unregisterPlugin(object)"), 1U);
    bound.controller->disconnect(&bound.host.peer);
}

TEST(ControllerLife, ReleaseWithoutTerminateStopsTheTimerAndCallsNobody)
{
    BoundController bound;
    bound.initialize();
    EXPECT_EQ(bound.controller.take()->release(), 0U);
    EXPECT_THAT(bound.trace.textsOf({"library.", "observer(", "service.", "updateHandler."}),
                IsEmpty());
    EXPECT_THAT(bound.host.runLoop.intervals(), IsEmpty());
    // A host that does not call terminate keeps its dependents.
    bound.host.updates.forgetDependents();
    CPluginFactory(PFactoryInfo()).setHostContext(nullptr);
    EXPECT_THAT(bound.host.ledger(), IsEmpty());
}

} // namespace
