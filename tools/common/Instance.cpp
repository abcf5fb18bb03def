#include "tools/common/Instance.h"

#include "public.sdk/source/common/memorystream.h"
#include "tools/common/Failure.h"

namespace Steinberg {
namespace Vst {
namespace tools {

Instance::Instance(const PlugIn& plugIn, FUnknown& hostContext, IComponentHandler& handler)
{
    componentPart = plugIn.factory().createInstance<IComponent>(plugIn.instrument().ID());
    processorPart = FUnknownPtr<IAudioProcessor>(componentPart);
    if (!processorPart)
        throw Failure("The plug-in gives no audio processor.");
    if (componentPart->initialize(&hostContext) != kResultOk)
        throw Failure("The plug-in's audio processor does not initialize.");
    initializedComponent.reset(componentPart);
    makeController(plugIn, hostContext, handler);
    connect();
}

void Instance::makeController(const PlugIn& plugIn, FUnknown& hostContext,
                              IComponentHandler& handler)
{
    TUID controllerID{};
    if (componentPart->getControllerClassId(controllerID) == kResultOk)
        controllerPart = plugIn.factory().createInstance<IEditController>(VST3::UID(controllerID));
    if (!controllerPart)
        throw Failure("The plug-in gives no edit controller.");
    if (controllerPart->initialize(&hostContext) != kResultOk)
        throw NoEditorLibrary(
            "The plug-in's controller does not initialize: it found no editor library that it can "
            "use, neither from the host nor installed on this machine.");
    initializedController.reset(controllerPart);
    controllerPart->setComponentHandler(&handler);
}

void Instance::connect()
{
    componentPoint = FUnknownPtr<IConnectionPoint>(componentPart);
    controllerPoint = FUnknownPtr<IConnectionPoint>(controllerPart);
    if (!componentPoint || !controllerPoint ||
        componentPoint->connect(controllerPoint) != kResultOk ||
        controllerPoint->connect(componentPoint) != kResultOk)
        throw Failure("The plug-in's two parts do not connect.");
}

Instance::~Instance()
{
    stop();
    if (controllerPoint && componentPoint) {
        controllerPoint->disconnect(componentPoint);
        componentPoint->disconnect(controllerPoint);
    }
    if (controllerPart)
        controllerPart->setComponentHandler(nullptr);
}

void Instance::start(int32 sampleRate, int32 blockSize)
{
    ProcessSetup setup{kRealtime, kSample32, blockSize, static_cast<SampleRate>(sampleRate)};
    activateBuses(true);
    if (processorPart->setupProcessing(setup) != kResultOk)
        throw Failure("The plug-in refuses " + std::to_string(sampleRate) + " Hz with blocks of " +
                      std::to_string(blockSize) + " samples.");
    if (!data.prepare(*componentPart, blockSize, kSample32))
        throw Failure("The plug-in's buses cannot be set up.");
    if (componentPart->setActive(true) != kResultOk)
        throw Failure("The plug-in does not become active.");
    isStarted = true;
    processorPart->setProcessing(true); // optional for a plug-in: any answer will do
}

void Instance::stop()
{
    if (!isStarted)
        return;
    isStarted = false;
    processorPart->setProcessing(false);
    componentPart->setActive(false);
    data.unprepare();
    activateBuses(false);
}

void Instance::activateBuses(bool state)
{
    for (const auto type : {kAudio, kEvent})
        for (const auto direction : {kInput, kOutput})
            for (int32 i = 0; i < componentPart->getBusCount(type, direction); ++i)
                componentPart->activateBus(type, direction, i, state);
}

std::vector<char> Instance::state()
{
    MemoryStream stream;
    if (componentPart->getState(&stream) != kResultOk)
        throw Failure("The plug-in does not save its state.");
    return {stream.getData(), stream.getData() + stream.getSize()};
}

void Instance::restore(const std::vector<char>& bytes)
{
    auto copy = bytes;
    MemoryStream componentStream(copy.data(), static_cast<TSize>(copy.size()));
    if (componentPart->setState(&componentStream) != kResultOk)
        throw Failure("The plug-in refuses the state that it saved.");
    MemoryStream controllerStream(copy.data(), static_cast<TSize>(copy.size()));
    controllerPart->setComponentState(&controllerStream);
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
