// Without a library initialize fails, and the plug-in does nothing afterwards, whatever else fails.
#include "hostapi/IExternalEffectUsingSKI.h"
#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstunits.h"
#include "tests/faults/HostBlock.h"
#include "tests/faults/Scenario.h"

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::HostFamily;
using testing::Each;
using testing::IsEmpty;

class Unbound : public Scenario {
public:
    Unbound()
    : Scenario(HostFamily::cubase("7.5.1"), Binding::kLibrary)
    {
        world.library.storesConnection = false;
    }

    void setUp() override {}
    void tearDown() override {}

    void act() override
    {
        world.trace.clear();
        world.start();
        isMade = world.component && world.controller;
        if (isMade)
            use();
        world.end();
    }

    void expectDone() override
    {
        EXPECT_EQ(world.initializeResult, kResultFalse);
        EXPECT_EQ(world.terminateResult, kResultOk);
        EXPECT_THAT(world.calls({"library.", "observer("}),
                    Each(std::string("library.getVSTEditorConnectObject()")));
        EXPECT_THAT(world.calls({"runLoop.", "updateHandler.", "service."}), IsEmpty());
        EXPECT_EQ(parameters, 0);
        EXPECT_EQ(processed, kResultOk);
        EXPECT_EQ(latency, 0u);
        EXPECT_EQ(saved, kResultFalse);
        EXPECT_EQ(restored, kResultOk);
        EXPECT_EQ(presetTaken, kResultOk);
        EXPECT_EQ(ready, kResultOk);
        EXPECT_EQ(units, 17);
        EXPECT_EQ(pressed, kResultFalse);
    }

    /** A fault changes nothing more, but without memory there may be no component or no view. */
    void expectStated(const Fault& fault) override
    {
        if (!isMade) {
            EXPECT_TRUE(fault.isOutOfMemory() || fault.is(Kind::kHostThrows));
            return;
        }
        const bool hasView = pressed >= 0;
        EXPECT_TRUE(hasView || fault.isOutOfMemory());
        pressed = kResultFalse;
        expectDone();
    }

    void expectBelieved(const Fault&) override { expectDone(); }

    void expectEnded(const Fault&) override
    {
        EXPECT_FALSE(world.file->closeAndAskWhetherStillLoaded());
    }

private:
    void use()
    {
        auto& component = *world.component;
        auto& controller = *world.controller;
        processed = saved = restored = presetTaken = ready = pressed = -1;
        latency = 1;
        const FUnknownPtr<IAudioProcessor> processor(world.component);
        HostBlock block(world.host);
        block.in.events.resize(2);
        block.changes.add(kVolume1, 1);
        world.step("setActive", [&] { component.setActive(true); });
        world.step("process", [&] { processed = processor->process(block.data); });
        world.step("getLatencySamples", [&] { latency = processor->getLatencySamples(); });
        HostStream stream(world.host, std::string("\1\0\0\0\1\0\0\0\1\0\0\0", 12));
        world.step("getState", [&] { saved = component.getState(&stream); });
        world.step("setState", [&] { restored = component.setState(&stream); });
        world.step("preset", [&] { presetTaken = controller.setState(&stream); });
        world.step("getParameterCount", [&] { parameters = controller.getParameterCount(); });
        const FUnknownPtr<IUnitInfo> unitInfo(world.controller);
        world.step("getUnitCount", [&] { units = unitInfo->getUnitCount(); });
        const FUnknownPtr<IExternalEffectUsingSKI> effect(world.controller);
        world.step("ready", [&] { ready = effect->hostReadyForSetPortConnections(); });
        IPtr<IPlugView> view;
        world.step("createView", [&] { view = owned(controller.createView(ViewType::kEditor)); });
        if (view)
            world.step("onKeyDown", [&] { pressed = view->onKeyDown('a', 0, 0); });
    }

    bool isMade = false;
    tresult processed = -1;
    tresult saved = -1;
    tresult restored = -1;
    tresult presetTaken = -1;
    tresult pressed = -1;
    int32 ready = -1;
    int32 parameters = -1;
    int32 units = -1;
    uint32 latency = 1;
};

TEST(Faults, InitializeWithoutALibrary)
{
    injectFaults<Unbound>("without a library");
}

} // namespace
} // namespace faults
