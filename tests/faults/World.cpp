#include "tests/faults/World.h"

#include "tests/faults/HostBlock.h"
#include "tests/faults/OwnCode.h"
#include "tests/faults/SystemFaults.h"

namespace faults {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

using VST3::Hosting::Module;

Module::Ptr loadPlugIn()
{
    std::string error;
    auto module = Module::create(BUNDLE_FOLDER, error);
    EXPECT_TRUE(module) << error;
    // Never unloaded, so that the leak sanitizer can name the code that left something behind.
    const tools::LibraryHandle kept(MODULE_FILE, RTLD_LAZY | RTLD_NODELETE);
    learnOwnCode(MODULE_FILE);
    return module;
}

/** Loaded once for all tests. */
Module::Ptr& plugInModule()
{
    static auto& module = *new Module::Ptr(loadPlugIn());
    return module;
}

const VST3::Hosting::PluginFactory& plugIn()
{
    return plugInModule()->getFactory();
}

VST3::UID classID(const std::string& digits)
{
    const auto id = VST3::UID::fromString(digits);
    return id ? *id : VST3::UID();
}

/** An instance, or null. One that cannot be made must leave a null pointer. */
template <typename Face>
IPtr<Face> createInstance(const std::string& digits)
{
    void* created = &plugInModule(); // any address but null
    const auto id = classID(digits);
    if (plugIn().get()->createInstance(id.data(), Face::iid, &created) == kResultOk)
        return owned(static_cast<Face*>(created));
    EXPECT_EQ(created, nullptr);
    return nullptr;
}

} // namespace

World::World(const doubles::HostFamily& family, Binding bound)
: binding(bound)
, host(trace, family)
, library(bound == Binding::kLibrary ? *file.emplace(trace) : inProcess.emplace(trace))
{
    plugInModule();
    // Only one parameter has texts. The others have one value, so that no texts are fetched.
    library.defaultParameter = {0, 0, 0, 0, {}};
    library.setParameter(kVolume1, {2, 0, 4, 0, {}});
    if (inProcess)
        host.service.offer(&library, inProcess->handle());
}

World::~World() = default;

bool World::hasFailed() const
{
    return !host.faultyText().empty() || !library.faultyText().empty() ||
           HostStream::transfers.hasFailed() || SystemFaults::hasFailed();
}

const VST3::Hosting::PluginFactory* World::loadAgain()
{
    auto& module = plugInModule();
    module = nullptr; // the last reference to the factory
    std::string error;
    module = Module::create(BUNDLE_FOLDER, error);
    return module ? &module->getFactory() : nullptr;
}

void World::create()
{
    step("setHostContext", [this] { plugIn().setHostContext(&host.context); });
    step("createInstance",
         [this] { component = createInstance<IComponent>("13EEE3484D664261B90352CE35DD18B4"); });
    step("createInstance", [this] {
        controller = createInstance<IEditController>("31DFD31BDBB84D128E0ABBC94E1BB134");
    });
}

void World::initialize()
{
    if (component)
        step("processor.initialize", [this] { component->initialize(&host.context); });
    if (!controller)
        return;
    step("controller.initialize",
         [this] { initializeResult = controller->initialize(&host.context); });
    if (initializeResult != kResultOk) { // a host may release it without terminate
        EXPECT_EQ(library.controller, nullptr) << "initialize failed and left the library bound";
    }
    step("setComponentHandler", [this] { controller->setComponentHandler(&host.handler); });
}

void World::connect()
{
    if (!component || !controller)
        return;
    step("processor.connect", [this] { processorPoint()->connect(controllerPoint()); });
    step("controller.connect", [this] { controllerPoint()->connect(processorPoint()); });
}

void World::disconnect()
{
    if (!component || !controller)
        return;
    step("controller.disconnect", [this] { controllerPoint()->disconnect(processorPoint()); });
    step("processor.disconnect", [this] { processorPoint()->disconnect(controllerPoint()); });
}

void World::terminate()
{
    if (component)
        step("processor.terminate", [this] { component->terminate(); });
    if (!controller)
        return;
    step("controller.terminate", [this] { terminateResult = controller->terminate(); });
    step("setComponentHandler", [this] { controller->setComponentHandler(nullptr); });
}

void World::release()
{
    const auto letGo = [](auto& object) {
        if (auto* last = object.take()) {
            EXPECT_EQ(last->release(), 0u) << "a component has another reference";
        }
    };
    step("release", [&] { letGo(component); });
    step("release", [&] { letGo(controller); });
    step("setHostContext", [] { plugIn().setHostContext(nullptr); });
}

void World::start()
{
    create();
    initialize();
    connect();
}

void World::end()
{
    disconnect();
    terminate();
    release();
}

IPtr<IConnectionPoint> World::controllerPoint() const
{
    return FUnknownPtr<IConnectionPoint>(controller);
}

IPtr<IConnectionPoint> World::processorPoint() const
{
    return FUnknownPtr<IConnectionPoint>(component);
}

} // namespace faults
