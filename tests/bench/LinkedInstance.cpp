#include "tests/bench/LinkedInstance.h"

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

} // namespace bench
