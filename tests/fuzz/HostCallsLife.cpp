// HostCallsScene: how instances come, are connected, and go.
#include "tests/fuzz/HostCallsPlugIn.h"
#include "tests/fuzz/HostCallsScene.h"

#include "pluginterfaces/vst/ivstplugview.h"

namespace fuzz {

using namespace Steinberg;
using namespace Steinberg::Vst;

void HostCallsScene::createController()
{
    auto& made = controller();
    if (made.object)
        return;
    auto* unknown = newController();
    FUnknownPtr<IEditController> face(unknown);
    FUZZ_CHECK(face);
    made = {};
    made.object = static_cast<VstK2xController*>(face.getInterface());
    unknown->release();
}

/** Terminates it first: library and host would keep the address of an initialised one. */
void HostCallsScene::releaseController()
{
    auto& released = controller();
    if (!released.object || inNested)
        return;
    terminate(released);
    released = {};
    // One that did not get the host's update handler at its end is still a dependent there.
    if (faulty)
        host.updates.forgetDependents();
}

void HostCallsScene::initializeController()
{
    auto& started = controller();
    const bool withContext = input.byte() % 4 != 0;
    if (!started.object || inNested)
        return;
    const bool first = !started.initialized;
    const tresult result = started.object->initialize(withContext ? &host.context : nullptr);
    FUZZ_CHECK(result == kResultOk || result == kResultFalse);
    if (!first) {
        FUZZ_CHECK(started.bound || result == kResultFalse);
        return;
    }
    started.initialized = true;
    started.bound = result == kResultOk;
    FUZZ_CHECK(nested || faulty || isConnection(*started.object, started.bound));
}

void HostCallsScene::terminateController()
{
    if (auto& ended = controller(); ended.object && !inNested)
        terminate(ended);
}

void HostCallsScene::terminate(Controller& ended)
{
    const tresult result = ended.object->terminate();
    FUZZ_CHECK(result == kResultOk || faulty || nested);
    FUZZ_CHECK(isConnection(*ended.object, false));
    ended.initialized = false;
    ended.bound = false;
}

void HostCallsScene::createProcessor()
{
    auto& made = processor();
    if (made.object)
        return;
    made = {};
    auto* unknown = newProcessor();
    FUnknownPtr<IAudioProcessor> face(unknown);
    FUZZ_CHECK(face);
    made.object = static_cast<VstK2x*>(face.getInterface());
    unknown->release();
}

/** Disconnects it first: a controller that is connected to it would keep it alive. */
void HostCallsScene::releaseProcessor()
{
    auto& released = processor();
    const bool ends = input.flag();
    if (!released.object || inNested)
        return;
    if (released.initialized && ends)
        released.object->terminate();
    for (auto& other : controllers)
        if (other.object)
            released.object->disconnect(other.object);
    released = {};
}

void HostCallsScene::initializeProcessor()
{
    auto& started = processor();
    FUnknown* context = input.byte() % 4 != 0 ? &host.context : nullptr;
    if (!started.object)
        return;
    const tresult result = started.object->initialize(context);
    FUZZ_CHECK(result == kResultOk || result == kResultFalse);
    started.initialized = true;
    FUZZ_CHECK(faulty || started.object->getBusCount(kAudio, kOutput) == 2);
    FUZZ_CHECK(faulty || started.object->getBusCount(kAudio, kInput) == 0);
    FUZZ_CHECK(faulty || started.object->getBusCount(kEvent, kInput) == 1);
    FUZZ_CHECK(faulty || started.object->getBusCount(kEvent, kOutput) == 1);
}

void HostCallsScene::terminateProcessor()
{
    auto& ended = processor();
    if (!ended.object || inNested)
        return;
    FUZZ_CHECK(ended.object->terminate() == kResultOk || faulty || nested);
    ended.initialized = false;
    FUZZ_CHECK(ended.object->getBusCount(kAudio, kOutput) == 0);
}

IConnectionPoint* HostCallsScene::anyPeer(bool ofController)
{
    const size_t index = input.below(kInstances + 2);
    if (index == kInstances)
        return &host.peer;
    if (index > kInstances)
        return nullptr;
    if (ofController)
        return processors[index].object.get();
    return controllers[index].object.get();
}

void HostCallsScene::setHandler()
{
    auto& told = controller();
    const bool null = input.byte() % 8 == 0;
    if (told.object)
        told.object->setComponentHandler(null ? nullptr : &host.handler);
}

void HostCallsScene::createView()
{
    auto& shown = view();
    auto& owner = controller();
    if (shown.object || !owner.object)
        return;
    FUZZ_CHECK(owner.object->createView(nullptr) == nullptr);
    FUZZ_CHECK(owner.object->createView("Editor") == nullptr);
    shown.object = owned(owner.object->createView("editor"));
    FUZZ_CHECK(shown.object || faulty);
    shown.attached = false;
}

/** Often after its controller was terminated or released. */
void HostCallsScene::releaseView()
{
    if (!inNested)
        view() = {};
}

void HostCallsScene::useView()
{
    auto& used = view();
    const size_t operation = input.below(10);
    const auto key = input.number<char16>();
    const auto code = input.number<int16>();
    const bool flag = input.flag();
    if (!used.object)
        return;
    IPlugView& face = *used.object;
    ViewRect rect;
    tresult result = kResultOk;
    switch (operation) {
    case 0:
        result = face.attached(this, flag ? kPlatformTypeNSView : nullptr);
        used.attached = true;
        break;
    case 1:
        result = face.removed();
        used.attached = false;
        break;
    case 2:
        result = face.onFocus(flag);
        break;
    case 3:
        result = face.onKeyDown(key, code, 0);
        break;
    case 4:
        result = face.onKeyUp(key, code, 0);
        break;
    case 5:
        result = face.onWheel(input.number<float>());
        break;
    case 6:
        result = face.getSize(&rect);
        break;
    case 7:
        rect = {0, 0, input.number<int32>(), input.number<int32>()};
        result = face.onSize(&rect);
        break;
    case 8:
        FUZZ_CHECK(face.isPlatformTypeSupported(nullptr) != kResultOk);
        FUZZ_CHECK(face.isPlatformTypeSupported("HWND") != kResultOk);
        result = face.isPlatformTypeSupported(kPlatformTypeNSView);
        break;
    default: {
        const FUnknownPtr<IParameterFinder> finder(&face);
        FUZZ_CHECK(finder);
        ParamID found = 0;
        result = finder->findParameter(key, code, found);
    }
    }
    FUZZ_CHECK(result == kResultOk || result == kResultFalse);
}

} // namespace fuzz
