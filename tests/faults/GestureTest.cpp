// A knob turned in the editor, which the host is told at once or from the timer; parameter texts.
#include "editorlib/VstIControllerInterface.h"
#include "tests/faults/Scenario.h"

#include <optional>

namespace faults {
namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::HostFamily;
using testing::ElementsAre;

/** A host with the extensions but without a name, so that edits wait for the timer. */
HostFamily nameless()
{
    auto family = HostFamily::cubase("7.5.1");
    family.hasApplicationW = false;
    return family;
}

/** The volume ranges from 0 to 4. */
class Gesture : public Scenario {
public:
    Gesture(const HostFamily& family, std::optional<size_t> expectedAtOnce = {})
    : Scenario(family)
    , expectedToldAtOnce(expectedAtOnce)
    {
    }

    void act() override
    {
        auto& controller = *world.controller;
        // Another value first, so that the knob's new value is a change.
        world.step("setVSTManageParameter",
                   [&] { world.library.controller->setVSTManageParameter(kVolume1, 1); });
        world.trace.clear();
        world.step("turn", [&] { world.library.turn(kVolume1, 3); });
        toldAtOnce = world.calls({"host."}).size();
        world.step("timer", [&] { world.host.runLoop.tick(); });
        world.step("getParamNormalized", [&] { shown = controller.getParamNormalized(kVolume1); });
        String128 text = {};
        world.step("getParamStringByValue",
                   [&] { textResult = controller.getParamStringByValue(kVolume1, 0.5, text); });
        firstOfText = text[0];
        TChar typed[] = {'+', '1', 0};
        parsed = -1;
        world.step("getParamValueByString",
                   [&] { controller.getParamValueByString(kVolume1, typed, parsed); });
        int value = 0;
        world.step("isSetVSTValue",
                   [&] { world.library.controller->isSetVSTValue(kVolume1, 0, value); });
    }

    void expectDone() override
    {
        EXPECT_THAT(world.calls({"host."}),
                    ElementsAre("host.beginEdit(37012000)", "host.performEdit(37012000, 0.75)",
                                "host.endEdit(37012000)"));
        EXPECT_EQ(toldAtOnce, expectedToldAtOnce.value_or(toldAtOnce));
        EXPECT_EQ(shown, 0.75);
        EXPECT_EQ(textResult, kResultOk);
        EXPECT_EQ(firstOfText, '2'); // 0 + 4 * 0.5 + 0.5, cut
        EXPECT_EQ(parsed, 0.25);
    }

    /** A host that fails at one of the three calls still gets the other two. Whatever else fails,
        the change is shown and the host is told of it, at once or from the timer. */
    void expectStated(const Fault& fault) override
    {
        if (fault.isOutOfMemory())
            return expectLess();
        EXPECT_EQ(world.calls({"host."}).size(), 3u);
        EXPECT_EQ(shown, 0.75);
        EXPECT_EQ(textResult, kResultOk);
        EXPECT_EQ(firstOfText, '2');
        EXPECT_EQ(parsed, 0.25);
    }

    void expectBelieved(const Fault& fault) override { expectStated(fault); }

private:
    /** Without memory an event may not be queued, and a text not converted. */
    void expectLess() const
    {
        EXPECT_LE(world.calls({"host."}).size(), 3u);
        EXPECT_TRUE(parsed == 0.25 || parsed == -1);
    }

    const std::optional<size_t> expectedToldAtOnce; ///< calls before the timer; nullopt: any number
    size_t toldAtOnce = 0;
    ParamValue shown = -1;
    ParamValue parsed = -1;
    tresult textResult = kResultFalse;
    TChar firstOfText = 0;
};

TEST(Faults, EditorValueChangeInOtherHosts)
{
    injectFaults("gestures, host without Unicode",
                 scenario<Gesture>(HostFamily::withoutUnicode("Cubase", "7.5.1")), hostKinds());
    injectFaults("gestures, plain host", scenario<Gesture>(HostFamily::plain()), hostKinds());
    injectFaults("gestures, stand-alone host", scenario<Gesture>(HostFamily::standalone()),
                 hostKinds());
}

TEST(Faults, EditorValueChangeToldAtOnce)
{
    injectFaults("gestures, at once", scenario<Gesture>(HostFamily::cubase("7.5.1"), 3));
}

TEST(Faults, EditorValueChangeToldByTheTimer)
{
    injectFaults("gestures, by timer", scenario<Gesture>(nameless(), 0));
}

} // namespace
} // namespace faults
