#include "tests/macos/fakes/FakeApplication.h"
#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/unit/BoundController.h"
#include "view/VstK2xEditorView.h"

#include "platform/CurrentEvent.h"

using namespace doubles;
using namespace Steinberg::Vst;

namespace {

constexpr unsigned kOlderWheelEvent = 10;
constexpr unsigned kScrollEvent = 11;

/** 1.6 is no 32-bit number; the nearest one in the digits that tell it from its neighbours. */
const std::string k1_6 = "1.600000023841858";

class WheelTest : public testing::Test {
protected:
    WheelTest() { FakeApplication::handleNothing(); }
    ~WheelTest() override { FakeApplication::handleNothing(); }

    /** What the library gets of each distance. */
    static std::vector<std::string> turn(const HostFamily& family, int hostType)
    {
        BoundController bound(family);
        bound.initialize();
        EXPECT_EQ(bound.controller->getVSTHostType(), hostType);
        const auto view = Steinberg::owned(new VstK2xEditorView(bound.controller, &bound.library));
        bound.trace.clear();
        for (const float distance : {1.6F, 2.0F, 3.0F, -1.6F, -2.0F, -3.0F, 0.25F})
            EXPECT_EQ(view->onWheel(distance), Steinberg::kResultOk);
        return bound.trace.textsOf({"library.onWheel"});
    }
    static std::vector<std::string> calls(const std::vector<std::string>& distances)
    {
        std::vector<std::string> result;
        for (const auto& distance : distances)
            result.push_back("library.onWheel(" + distance + ")");
        return result;
    }

    const std::vector<std::string> halved =
        calls({k1_6, "1", "1.5", "-" + k1_6, "-1", "-1.5", "1"});
    const std::vector<std::string> unchanged = calls({k1_6, "2", "3", "-" + k1_6, "-2", "-3", "1"});
};

TEST_F(WheelTest, AScrollEventIsOneOfKind11)
{
    EXPECT_FALSE(platform::isCurrentEventScroll());
    FakeApplication::handleEventWithoutReference();
    EXPECT_FALSE(platform::isCurrentEventScroll());
    for (const unsigned kind : {0U, 1U, 5U, 10U, 12U, 0xFFFFFFFFU}) {
        FakeApplication::handleEventOfKind(kind);
        EXPECT_FALSE(platform::isCurrentEventScroll()) << kind;
    }
    FakeApplication::handleEventOfKind(kScrollEvent);
    EXPECT_TRUE(platform::isCurrentEventScroll());
}

TEST_F(WheelTest, AScrollOfTwoLinesAndMoreIsHalvedInACubaseFamilyHost)
{
    FakeApplication::handleEventOfKind(kScrollEvent);
    EXPECT_EQ(turn(HostFamily::cubase("7.5.1"), 0), halved);
}

TEST_F(WheelTest, WithoutAScrollEventTheDistanceStays)
{
    EXPECT_EQ(turn(HostFamily::cubase("7.5.1"), 0), unchanged);
    FakeApplication::handleEventWithoutReference();
    EXPECT_EQ(turn(HostFamily::cubase("7.5.1"), 0), unchanged);
    FakeApplication::handleEventOfKind(kOlderWheelEvent);
    EXPECT_EQ(turn(HostFamily::cubase("7.5.1"), 0), unchanged);
}

TEST_F(WheelTest, InOtherHostsTheDistanceStays)
{
    FakeApplication::handleEventOfKind(kScrollEvent);
    EXPECT_EQ(turn(HostFamily::standalone(), 1), unchanged);
    EXPECT_EQ(turn(BoundController::nameless(), 2), unchanged);
}

} // namespace
