#include "tests/fuzz/HostCallsScene.h"

#include "hostapi/IComponentPortHandler.h"
#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"
#include "hostapi/IPortRegistry.h"
#include "pluginterfaces/base/iupdatehandler.h"
#include "tests/doubles/Parameters.h"

namespace fuzz {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::HostFamily;
using doubles::kVolume1;

namespace {

HostFamily familyOf(FuzzInput& input)
{
    const HostFamily families[] = {
        HostFamily::cubase("7.5.1"),     HostFamily::cubase("7.4.0"),
        HostFamily::nuendo("6.5.0"),     HostFamily::cubaseLE("8.0.0"),
        HostFamily::standalone(),        HostFamily::withoutUnicode("Cubase", "5.0.0"),
        HostFamily::applicationAOnly(),  HostFamily::plain(),
        HostFamily::named("Other", "1"), HostFamily::withoutUnicode("Nuendo", "4.1.2")};
    return input.oneOf(families);
}

} // namespace

HostCallsScene::HostCallsScene(FuzzInput& bytes)
: input(bytes)
, host(trace, familyOf(bytes))
, file(bytes.byte() % 4 != 0)
{
    factory.setHostContext(&host.context);
    // For a range of one value no texts are fetched, which would take most of the time.
    serviceLibrary.defaultParameter = {0, 0, 0, 0, {}};
    serviceLibrary.setParameter(kVolume1, {2, 0, 4, 0, {}});
    serviceLibrary.connectionFor = [this] { return newLibrary(); };
    const auto hides = input.byte();
    const FUID interfaces[] = {IPortRegistry::iid, IComponentPortHandler::iid, IHostClasses::iid,
                               IUpdateHandler::iid};
    for (size_t i = 0; i < std::size(interfaces); ++i)
        if (hides & (0x10u << i))
            host.hide(interfaces[i]);
    setUpTracks();
    setUpPorts();
}

void HostCallsScene::setUpTracks()
{
    host.devices.addMidiTrack("Piano", "Synth 1 - RDL3/RDL5 VST", 3);
    auto& lead = host.devices.addInstrumentTrack("Lead", "Synth 2", 4);
    host.devices.addInstrument("Synth 2", "RDL3/RDL5 VST", &lead);
    host.devices.addMidiTrack("Else", "Synth 3 - Other VST", 5);
    host.devices.addAudioTrack("Voice");
}

void HostCallsScene::setUpPorts()
{
    host.ports.audioInput("A", "Tavrin 1");
    host.ports.audioInput("B", "Tavrin 2").displayed = false;
    host.ports.addNull();
    host.ports.midiOutput("M", "Port1").systemName = "Tavrin RDL3/RDL5 Port1";
    host.ports.midiInput("P", "Tavrin RDL3/RDL5 Port4");
}

/** Each time the library is loaded it is a new object, so that a use of the one before is seen. */
VstIEditorConnect* HostCallsScene::newLibrary()
{
    auto& library = fileLibraries.emplace_back(trace);
    library.defaultParameter = serviceLibrary.defaultParameter;
    library.setParameter(kVolume1, {2, 0, 4, 0, {}});
    return &library;
}

/** Index 0 is the one that was loaded last. */
doubles::ScriptedLibrary& HostCallsScene::anyLibrary()
{
    const size_t index = input.below(fileLibraries.size() + 1);
    const size_t count = fileLibraries.size();
    return index == count ? serviceLibrary : fileLibraries[count - 1 - index];
}

void HostCallsScene::step()
{
    using Scene = HostCallsScene;
    constexpr void (Scene::*operations[])() = {&Scene::createController,
                                               &Scene::initializeController,
                                               &Scene::createProcessor,
                                               &Scene::initializeProcessor,
                                               &Scene::connectController,
                                               &Scene::connectProcessor,
                                               &Scene::createView,
                                               &Scene::activate,
                                               &Scene::process,
                                               &Scene::releaseController,
                                               &Scene::terminateController,
                                               &Scene::releaseProcessor,
                                               &Scene::terminateProcessor,
                                               &Scene::disconnectController,
                                               &Scene::disconnectProcessor,
                                               &Scene::setHandler,
                                               &Scene::releaseView,
                                               &Scene::useView,
                                               &Scene::moveProcessorState,
                                               &Scene::setControllerState,
                                               &Scene::useParameters,
                                               &Scene::useUnits,
                                               &Scene::useExtension,
                                               &Scene::tick,
                                               &Scene::turnKnob,
                                               &Scene::callController,
                                               &Scene::callProcessor,
                                               &Scene::moveTracks,
                                               &Scene::changeAnswers,
                                               &Scene::changeService,
                                               &Scene::fail,
                                               &Scene::nest};
    (this->*input.oneOf(operations))();
    checkAfterStep();
    trace.clear();
}

void HostCallsScene::checkAfterStep() const
{
    for (const auto& controller : controllers)
        if (controller.object && !nested && !faulty) {
            FUZZ_CHECK(controller.object->getUnitCount() == 17);
            FUZZ_CHECK(controller.object->getParameterCount() ==
                       (controller.bound ? doubles::kParameters : 0));
        }
    if (nested || faulty)
        return;
    FUZZ_CHECK(host.handler.unpairedEdits().empty());
    FUZZ_CHECK(serviceLibrary.complaints().empty());
    for (const auto& library : fileLibraries)
        FUZZ_CHECK(library.complaints().empty());
}

void HostCallsScene::close()
{
    host.onCall = nullptr;
    serviceLibrary.onCall = nullptr;
    host.clearFaults();
    serviceLibrary.clearFaults();
    for (auto& library : fileLibraries) {
        library.clearFaults();
        library.onCall = nullptr;
    }
    for (auto& view : views) {
        if (view.object && view.attached)
            view.object->removed();
        view.object = nullptr;
    }
    for (auto& processor : processors)
        for (auto& controller : controllers)
            if (processor.object && controller.object) {
                controller.object->disconnect(processor.object);
                processor.object->disconnect(controller.object);
            }
    for (auto& controller : controllers)
        if (controller.object) {
            controller.object->disconnect(&host.peer);
            terminate(controller);
            controller.object = nullptr;
        }
    for (auto& processor : processors)
        if (processor.object) {
            processor.object->disconnect(&host.peer);
            processor.object->terminate();
            processor.object = nullptr;
        }
    factory.setHostContext(nullptr);
    checkAtEnd();
}

void HostCallsScene::checkAtEnd() const
{
    checkAfterStep();
    if (faulty)
        return;
    for (const auto& line : host.ledger()) {
        std::fprintf(stderr, "%s\n", line.c_str());
        FUZZ_CHECK(!"every reference of the host is back");
    }
    FUZZ_CHECK(everOffered || file.openCount() == 0);
    for (const auto& library : fileLibraries)
        FUZZ_CHECK(everOffered || library.isDestroyed());
}

} // namespace fuzz
