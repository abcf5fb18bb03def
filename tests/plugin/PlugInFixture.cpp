#include "tests/plugin/PlugInFixture.h"

namespace plugin {

using namespace Steinberg;
using namespace Steinberg::Vst;

VST3::UID classID(const std::string& digits)
{
    const auto id = VST3::UID::fromString(digits);
    return id ? *id : VST3::UID();
}

VST3::UID processorID()
{
    return classID("13EEE3484D664261B90352CE35DD18B4");
}

VST3::UID controllerID()
{
    return classID("31DFD31BDBB84D128E0ABBC94E1BB134");
}

const std::string PlugInFixture::kCreate =
    "componentFactory.createComponent(UID, BBA9E2BA9E28483CAA608081B0166B85)";
const std::string PlugInFixture::kGiveBack = "componentFactory.destroyComponent(component(1))";

PlugInFixture::PlugInFixture(const doubles::HostFamily& family)
: host(trace, family)
{
}

PlugInFixture::~PlugInFixture() = default;

void PlugInFixture::SetUp()
{
    std::string error;
    module = VST3::Hosting::Module::create(BUNDLE_FOLDER, error);
    ASSERT_TRUE(module) << error;
    module->getFactory().setHostContext(&host.context);
    component = module->getFactory().createInstance<IComponent>(processorID());
    controller = module->getFactory().createInstance<IEditController>(controllerID());
    ASSERT_TRUE(component);
    ASSERT_TRUE(controller);
    trace.clear();
}

void PlugInFixture::releaseComponents()
{
    IComponent* lastComponent = component.take();
    IEditController* lastController = controller.take();
    EXPECT_EQ(lastController->release(), 0u);
    EXPECT_EQ(lastComponent->release(), 0u);
    module->getFactory().setHostContext(nullptr);
    module.reset();
}

IPtr<IConnectionPoint> PlugInFixture::controllerPoint() const
{
    return FUnknownPtr<IConnectionPoint>(controller);
}

IPtr<IConnectionPoint> PlugInFixture::processorPoint() const
{
    return FUnknownPtr<IConnectionPoint>(component);
}

void PlugInFixture::startProcessor() const
{
    EXPECT_EQ(component->initialize(&host.context), kResultOk);
    EXPECT_EQ(processorPoint()->connect(controllerPoint()), kResultOk);
    EXPECT_EQ(controllerPoint()->connect(processorPoint()), kResultOk);
}

void PlugInFixture::stopProcessor() const
{
    EXPECT_EQ(controllerPoint()->disconnect(processorPoint()), kResultOk);
    EXPECT_EQ(processorPoint()->disconnect(controllerPoint()), kResultOk);
    EXPECT_EQ(component->terminate(), kResultOk);
}

PlugInFixture::Texts PlugInFixture::lifeCycle() const
{
    Texts result;
    for (auto& text : trace.textsOf({"library.", "service.", "component(", "componentFactory."}))
        if (text.find("Parameter") == std::string::npos &&
            text.find("Observer") == std::string::npos)
            result.push_back(text);
    return result;
}

} // namespace plugin
