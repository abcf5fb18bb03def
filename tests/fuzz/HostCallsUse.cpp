// HostCallsScene: what host, library and user do while instances live.
#include "tests/doubles/EventListDouble.h"
#include "tests/doubles/ParameterChangesDouble.h"
#include "tests/doubles/StreamDouble.h"
#include "tests/fuzz/HostCallsScene.h"

#include <algorithm>

namespace fuzz {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr unsigned kIDs[] = {37012000, 37013000, 37012015, 19001003, 201005000, 0, 0xFFFFFFFF};

} // namespace

unsigned HostCallsScene::anyParameter()
{
    return input.oneOf(kIDs);
}

bool HostCallsScene::isAlive(const VstIEffectInterface* effect) const
{
    return std::any_of(std::begin(processors), std::end(processors), [&](const Processor& one) {
        return static_cast<const VstIEffectInterface*>(one.object.get()) == effect;
    });
}

bool HostCallsScene::isAlive(const VstIControllerInterface* face) const
{
    return std::any_of(std::begin(controllers), std::end(controllers), [&](const Controller& one) {
        return static_cast<const VstIControllerInterface*>(one.object.get()) == face;
    });
}

void HostCallsScene::activate()
{
    auto& used = processor();
    ProcessSetup setup{kRealtime, input.flag() ? kSample32 : kSample64, 512,
                       input.flag() ? 44100. : input.number<double>()};
    const bool active = input.flag();
    if (!used.object)
        return;
    FUZZ_CHECK(used.object->setupProcessing(setup) ==
               (setup.symbolicSampleSize == kSample32 ? kResultOk : kResultFalse));
    FUZZ_CHECK(used.object->setActive(active) == kResultOk);
    FUZZ_CHECK(used.object->setProcessing(active) != kResultFalse);
    used.object->getLatencySamples();
}

void HostCallsScene::process()
{
    auto& used = processor();
    doubles::EventListDouble in;
    doubles::EventListDouble out;
    doubles::ParameterChangesDouble changes;
    const size_t events = input.below(4);
    for (size_t i = 0; i < events; ++i) {
        const auto channel = input.number<int16>();
        const auto pitch = input.number<int16>();
        in.add(doubles::noteOn(channel, pitch, input.number<float>()));
    }
    const unsigned id = anyParameter();
    changes.add(id, {{0, input.number<double>()}});
    changes.addNull();
    const bool takes = input.flag();
    if (!used.object)
        return;
    ProcessData data;
    data.inputEvents = &in;
    data.inputParameterChanges = &changes;
    data.outputEvents = takes ? &out : nullptr;
    FUZZ_CHECK(used.object->process(data) == kResultOk);
    FUZZ_CHECK(out.events.size() <= 100);
    FUZZ_CHECK(in.getReferences() == 1 && out.getReferences() == 1);
    FUZZ_CHECK(changes.foreignReferences() == 0);
}

void HostCallsScene::moveProcessorState()
{
    auto& used = processor();
    doubles::StreamDouble stream(input.bytes(40));
    const bool null = input.byte() == 255;
    if (!used.object)
        return;
    const tresult set = used.object->setState(null ? nullptr : &stream);
    const tresult got = used.object->getState(null ? nullptr : &stream);
    FUZZ_CHECK(set == kResultOk || set == kResultFalse);
    FUZZ_CHECK(got == kResultOk || got == kResultFalse);
    FUZZ_CHECK(stream.getReferences() == 1);
}

void HostCallsScene::setControllerState()
{
    auto& used = controller();
    doubles::StreamDouble stream(input.bytes(40));
    const bool null = input.byte() == 255;
    if (!used.object)
        return;
    FUZZ_CHECK(used.object->setState(null ? nullptr : &stream) == kResultOk);
    FUZZ_CHECK(used.object->setComponentState(null ? nullptr : &stream) == kResultOk);
    FUZZ_CHECK(used.object->getState(null ? nullptr : &stream) == kResultOk);
    FUZZ_CHECK(stream.getReferences() == 1);
}

void HostCallsScene::useParameters()
{
    auto& used = controller();
    const unsigned id = anyParameter();
    const auto value = input.number<double>();
    auto text = input.units(20);
    const auto index = input.number<int16>();
    if (!used.object)
        return;
    auto& parameters = *used.object;
    ParameterInfo info = {};
    parameters.getParameterInfo(index, info);
    String128 shown = {};
    TChar given[128] = {};
    std::copy(text.begin(), text.end(), given);
    const bool known = parameters.getParamStringByValue(id, value, shown) == kResultOk;
    FUZZ_CHECK(faulty || nested || known == (parameters.getParameterObject(id) != nullptr));
    ParamValue parsed = 0;
    if (parameters.getParamValueByString(id, given, parsed) == kResultOk)
        FUZZ_CHECK(known && parsed >= 0 && parsed <= 1);
    FUZZ_CHECK((parameters.setParamNormalized(id, value) == kResultOk) == known);
    const auto normalized = parameters.getParamNormalized(id);
    FUZZ_CHECK(!(value >= 0 && value <= 1) || normalized == (known ? value : 0));
    parameters.normalizedParamToPlain(id, value);
    parameters.plainParamToNormalized(id, value);
}

void HostCallsScene::useUnits()
{
    auto& used = controller();
    const auto index = input.number<int16>();
    if (!used.object)
        return;
    const FUnknownPtr<IUnitInfo> units(static_cast<IEditController*>(used.object.get()));
    FUZZ_CHECK(units && units->getUnitCount() == 17 && units->getProgramListCount() == 0);
    UnitInfo info = {};
    FUZZ_CHECK(units->getUnitInfo(index, info) == kResultOk);
    UnitID unit = 0;
    units->getSelectedUnit();
    units->selectUnit(index);
    units->getUnitByBus(kEvent, kInput, 0, index, unit);
    units->setUnitProgramData(index, 0, nullptr);
}

void HostCallsScene::useExtension()
{
    auto& used = controller();
    if (!used.object)
        return;
    const FUnknownPtr<IExternalEffectUsingSKI> extension(
        static_cast<IEditController*>(used.object.get()));
    float gain = 0;
    FUZZ_CHECK(extension && extension->hostReadyForSetPortConnections() == kResultOk);
    FUZZ_CHECK(extension->getReturnGain(gain) == kResultOk && gain > 1.414f && gain < 1.415f);
}

void HostCallsScene::tick()
{
    host.runLoop.tick();
}

void HostCallsScene::turnKnob()
{
    const unsigned id = anyParameter();
    serviceLibrary.turn(id, input.number<int16>());
}

void HostCallsScene::callController()
{
    auto* face = anyLibrary().controller;
    const size_t operation = input.below(10);
    const auto number = input.number<int16>();
    const unsigned id = anyParameter();
    const auto value = input.number<double>();
    constexpr const char* names[] = {"A", "B", "P", "", nullptr, "none"};
    const char* ports[] = {input.oneOf(names), input.oneOf(names), input.oneOf(names),
                           input.oneOf(names)};
    if (!face)
        return;
    // Whoever ended has taken its address back.
    FUZZ_CHECK(faulty || nested || isAlive(face));
    if (!isAlive(face))
        return;
    int editorValue = 7;
    switch (operation) {
    case 0:
        face->editorPartSyncMidiCh(static_cast<unsigned>(number));
        break;
    case 1:
        face->setVSTManageParameter(id, number);
        break;
    case 2:
        face->setInitialStartFileLoad(number != 0);
        break;
    case 3:
        FUZZ_CHECK(face->isSetVSTValue(id, value, editorValue) || editorValue == 0);
        break;
    case 4:
        face->changeLatencyTrigger();
        break;
    case 5:
        face->storeUserBank(static_cast<VoiceBank::Bank>(number % 16), number);
        break;
    default:
        callPorts(*face, ports);
    }
}

void HostCallsScene::callPorts(VstIControllerInterface& face, const char** ids)
{
    face.setAudioPortList(input.byte() == 255 ? nullptr : ids);
    face.setMidiOutPort(input.flag() ? "M" : nullptr);
    FUZZ_CHECK(face.getAudioPortList() && face.getMidiOutPortList());
    face.isConnectAudioPort();
    face.isConnectAudioPortHost();
    face.isHostReadyForSetPort();
}

void HostCallsScene::callProcessor()
{
    auto* effect = anyLibrary().effect;
    const uint8_t bytes[3] = {input.byte(), input.byte(), input.byte()};
    int count = 1 + input.byte();
    if (!effect || !isAlive(effect))
        return;
    for (; count > 0; --count)
        effect->writeMidi(bytes, 3);
}

void HostCallsScene::moveTracks()
{
    const size_t operation = input.below(6);
    const auto number = input.number<int8_t>();
    host.updates.deferred = number < -100;
    switch (operation) {
    case 0:
        host.devices.select(number);
        break;
    case 1:
        host.devices.tellTracksChanged();
        break;
    case 2:
        host.devices.tell(host.devices.mixer(), number);
        break;
    case 3:
        host.devices.tell(host.devices.mixer().value("selected"), number);
        break;
    case 4:
        if (!host.devices.mixer().children.empty())
            host.devices.removeTrack(static_cast<uint8_t>(number) %
                                     host.devices.mixer().children.size());
        break;
    default:
        host.updates.deliver();
    }
}

void HostCallsScene::changeAnswers()
{
    auto& library = anyLibrary();
    library.latencyMode = input.number<int8_t>();
    library.stateFormat = input.byte() % 3;
    library.stateTextResult = input.byte() % 2;
    library.firstStartState = input.byte() % 3;
    library.prepareResult = input.byte() % 2;
    library.closeResult = input.byte() % 2;
    const auto bytes = input.bytes(20);
    library.state.assign(bytes.begin(), bytes.end());
    const auto maximum = input.number<int8_t>();
    library.setParameter(37013000, {input.number<int8_t>(), 0, maximum, 0, {}});
}

void HostCallsScene::changeService()
{
    auto& service = host.service;
    const auto options = input.byte();
    service.offer(&serviceLibrary, (options & 1) ? nullptr : serviceLibrary.handle());
    service.makesComponent = (options & 2) == 0;
    service.offersGetter = (options & 4) == 0;
    service.offersPluginBase = (options & 8) != 0;
    service.initializeResult = (options & 16) ? kResultFalse : kResultOk;
    service.givesService = (options & 32) == 0;
    service.registerResult = (options & 64) ? kResultFalse : kResultOk;
    service.setsPluginInfo = (options & 128) == 0;
    everOffered = true;
}

/** From here on only what holds whatever fails is checked. */
void HostCallsScene::fail()
{
    const size_t call = 1u + input.byte();
    const size_t kind = input.below(4);
    auto& library = anyLibrary();
    faulty = true;
    if (kind == 0)
        host.failAtCall(call);
    else if (kind == 1)
        host.throwAtCall(call);
    else if (kind == 2)
        library.failAtCall(call);
    else
        library.throwAtCall(call);
}

/** The next operation runs from inside a call of the one after it. */
void HostCallsScene::nest()
{
    if (inNested)
        return;
    nested = true;
    const size_t call = input.byte();
    auto hook = [this, call, count = size_t{0}](const std::string&) mutable {
        if (inNested || count++ != call)
            return;
        inNested = true;
        step();
        inNested = false;
    };
    if (input.flag())
        host.onCall = hook;
    else
        anyLibrary().onCall = hook;
}

} // namespace fuzz
