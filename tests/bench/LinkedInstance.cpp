#include "tests/bench/LinkedInstance.h"

#include <malloc.h>

namespace bench {

using namespace Steinberg;
using namespace Steinberg::Vst;

LinkedInstance::LinkedInstance(BenchHost& host)
: component(owned(new VstK2x))
, editController(owned(new VstK2xController))
, audio(component)
{
    component->initialize(host.context());
    editController->initialize(host.context());
    editController->setComponentHandler(handler);
    component->connect(editController);
    editController->connect(component);
    component->setActive(true);
}

LinkedInstance::~LinkedInstance()
{
    component->setActive(false);
    editController->disconnect(component);
    component->disconnect(editController);
    editController->setComponentHandler(nullptr);
    editController->terminate();
    component->terminate();
}

std::vector<std::unique_ptr<LinkedInstance>> linkedInstances(BenchHost& host, int count)
{
    std::vector<std::unique_ptr<LinkedInstance>> instances(static_cast<size_t>(count));
    for (auto& instance : instances)
        instance = std::make_unique<LinkedInstance>(host);
    return instances;
}

void warmUp(BenchHost& host)
{
    linkedInstances(host, 1);
    malloc_trim(0);
}

} // namespace bench
