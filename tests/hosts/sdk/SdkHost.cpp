#include "tests/hosts/sdk/SdkHost.h"

#include "public.sdk/source/common/memorystream.h"
#include "tools/common/LoadedSimulator.h"

#include <array>

namespace hosts {

using namespace Steinberg;
using namespace Steinberg::Vst;

const std::string kSdkHost = "SDK's hosting classes " + std::string(kVstVersionString);

SdkHost::SdkHost()
{
    std::string error;
    module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
    PluginContextFactory::instance().setPluginContext(&application);
}

SdkHost::~SdkHost()
{
    PluginContextFactory::instance().setPluginContext(nullptr);
}

VST3::Hosting::ClassInfo SdkHost::processorClass() const
{
    if (module)
        for (const auto& info : module->getFactory().classInfos())
            if (info.ID().toString() == "13EEE3484D664261B90352CE35DD18B4")
                return info;
    return {};
}

SdkInstance::SdkInstance(const SdkHost& host)
: provider(owned(new PlugProvider(host.factory(), host.processorClass())))
{
    if (!provider->initialize())
        return;
    component = provider->getComponentPtr();
    controller = provider->getControllerPtr();
    processor = FUnknownPtr<IAudioProcessor>(component);
    // The newest instrument is this instance's, since instances are made on one thread.
    simulator = tools::findSimulator();
}

void SdkInstance::start() const
{
    ProcessSetup setup{kRealtime, kSample32, blockSize, sampleRate};
    processor->setupProcessing(setup);
    component->setActive(true);
    processor->setProcessing(true);
}

void SdkInstance::stop() const
{
    processor->setProcessing(false);
    component->setActive(false);
}

std::vector<Event> SdkInstance::process(IEventList* input) const
{
    std::array<float, blockSize> samples{};
    std::array<float*, 2> channels{samples.data(), samples.data()};
    std::array<AudioBusBuffers, 2> buses{};
    for (auto& bus : buses) {
        bus.numChannels = 2;
        bus.channelBuffers32 = channels.data();
    }
    EventList output(200);
    ProcessData data;
    data.processMode = kRealtime;
    data.symbolicSampleSize = kSample32;
    data.numSamples = blockSize;
    data.numOutputs = static_cast<int32>(buses.size());
    data.outputs = buses.data();
    data.inputEvents = input;
    data.outputEvents = &output;
    processor->process(data);
    std::vector<Event> events(static_cast<size_t>(output.getEventCount()));
    for (size_t index = 0; index < events.size(); ++index)
        output.getEvent(static_cast<int32>(index), events[index]);
    return events;
}

std::vector<char> SdkInstance::save() const
{
    MemoryStream stream;
    if (component->getState(&stream) != kResultOk)
        return {};
    return {stream.getData(), stream.getData() + stream.getSize()};
}

tresult SdkInstance::restore(const std::vector<char>& bytes) const
{
    auto copy = bytes;
    MemoryStream stream(copy.data(), static_cast<TSize>(copy.size()));
    return component->setState(&stream);
}

int liveInstruments()
{
    int count = 0;
    while (tools::findSimulator(editorLibraryPath(), count))
        ++count;
    return count;
}

} // namespace hosts
