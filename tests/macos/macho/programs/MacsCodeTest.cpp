// What the plug-in's Mac code asks of macOS, in a scripted host with a scripted library: timers,
// the application's current event, and Core Foundation's objects.
#include "tests/doubles/MacsCode.h"
#include "tests/doubles/Parameters.h"
#include "tests/plugin/PlugInFixture.h"

#include "pluginterfaces/gui/iplugview.h"

#include <thread>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::kVolume1;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kScrollEvent = 11; // kEventMouseScroll of Carbon's CarbonEvents.h

class MacsCode : public plugin::PlugInFixture {
protected:
    explicit MacsCode(const doubles::HostFamily& family = doubles::HostFamily::cubase("7.5.1"))
    : PlugInFixture(family)
    {
    }

    doubles::LoadedLibrary library{trace};
    const MachoSystem* mac = nullptr;

    void SetUp() override
    {
        ASSERT_TRUE(library) << "this program runs under with-simulator --library";
        // Fetching the texts of values takes most of the time; a range of one value has none.
        library->defaultParameter = {0, 0, 0, 0, {}};
        library->setParameter(kVolume1, {0, 0, 4, 0, {}});
        PlugInFixture::SetUp();
        mac = doubles::macSystem();
        ASSERT_TRUE(mac) << "the plug-in is not the Mac's";
        ASSERT_EQ(initialize(), kResultOk);
        startProcessor();
        controller->setComponentHandler(&host.handler);
        trace.clear();
    }

    void TearDown() override
    {
        stopProcessor();
        controller->setComponentHandler(nullptr);
        EXPECT_EQ(controller->terminate(), kResultOk);
        EXPECT_EQ(mac->timers(), 0u);
        EXPECT_EQ(mac->objects(), 0u);
        EXPECT_EQ(mac->misuses(), 0u);
        releaseComponents();
        EXPECT_THAT(host.ledger(), IsEmpty());
    }

    /** The library's calls when the host passes these distances to onWheel. */
    std::vector<std::string> turnWheel(const std::vector<float>& distances)
    {
        const auto view = owned(controller->createView(ViewType::kEditor));
        EXPECT_TRUE(view);
        trace.clear();
        for (const float distance : distances)
            EXPECT_EQ(view->onWheel(distance), kResultOk);
        return trace.textsOf({"library.onWheel"});
    }
};

/** In such a host the editor's changes wait for the timer. */
class MacsCodeInANamelessHost : public MacsCode {
protected:
    MacsCodeInANamelessHost()
    : MacsCode(nameless())
    {
    }

    static doubles::HostFamily nameless()
    {
        auto family = doubles::HostFamily::cubase("7.5.1");
        family.hasApplicationW = false;
        return family;
    }
};

TEST_F(MacsCodeInANamelessHost, TimerTicksEvery50MillisecondsOnTheSystemsRunLoop)
{
    EXPECT_EQ(mac->timers(), 1u);
    EXPECT_NEAR(mac->delay(), 0.05, 1e-6);
    EXPECT_NEAR(mac->interval(), 0.05, 1e-6);
    EXPECT_NEAR(mac->tolerance(), 0.005, 1e-6) << "a tenth of the interval";
}

TEST_F(MacsCodeInANamelessHost, TimerTickPassesTheEditorsChangesToTheHostOnItsOwnThread)
{
    library->turn(kVolume1, 1);
    std::thread(mac->fireTimers).join();
    EXPECT_EQ(trace.count("host.performEdit"), 0u);
    mac->fireTimers();
    EXPECT_THAT(trace.textsOf({"host.performEdit"}),
                ElementsAre("host.performEdit(37012000, 0.25)"));
}

TEST_F(MacsCodeInANamelessHost, OnWheelKeepsTheDistanceOfAScrollEvent)
{
    mac->handleEventOfKind(kScrollEvent);
    EXPECT_THAT(turnWheel({3}), ElementsAre("library.onWheel(3)"));
}

TEST_F(MacsCode, OnWheelHalvesTheDistanceOfAScrollEventFromTwoOn)
{
    mac->handleEventOfKind(kScrollEvent);
    EXPECT_THAT(turnWheel({1.5F, 2, 3, -1.5F, -2, -3, 0.25F}),
                ElementsAre("library.onWheel(1.5)", "library.onWheel(1)", "library.onWheel(1.5)",
                            "library.onWheel(-1.5)", "library.onWheel(-1)", "library.onWheel(-1.5)",
                            "library.onWheel(1)"));
}

TEST_F(MacsCode, OnWheelKeepsTheDistanceOfAnyOtherEvent)
{
    const auto unchanged = ElementsAre("library.onWheel(2)", "library.onWheel(-3)");
    EXPECT_THAT(turnWheel({2, -3}), unchanged) << "no event";
    mac->handleEventWithoutReference();
    EXPECT_THAT(turnWheel({2, -3}), unchanged) << "an event without a Carbon event";
    for (const unsigned kind : {0U, 1U, 5U, 10U, 12U, 0xFFFFFFFFU}) {
        mac->handleEventOfKind(kind);
        EXPECT_THAT(turnWheel({2, -3}), unchanged) << kind;
    }
}

/** The SDK formats numbers with Core Foundation. */
TEST_F(MacsCode, GetParamStringByValueWritesNumbers)
{
    String128 text = {};
    EXPECT_EQ(controller->getParamStringByValue(kVolume1, 0.5, text), kResultOk);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(text)), u"2");
}

/** The exception is unwound through the Mac's frames by the Mac's tables. */
TEST_F(MacsCode, OnWheelLetsNoExceptionOfTheLibraryOut)
{
    library->throwAt("onWheel");
    const auto view = owned(controller->createView(ViewType::kEditor));
    EXPECT_NO_THROW(view->onWheel(1));
    EXPECT_EQ(trace.count("library.onWheel(1)"), 1u);
}

#ifdef __aarch64__
/** Apple's callers on arm64 may use what a constructor returns. The plug-in's code does not today,
    so no other test checks it. */
TEST_F(MacsCode, ConstructorsOfTheCppLibraryReturnTheObject)
{
    const std::string original(100, 'x');
    std::aligned_storage_t<sizeof(std::string), alignof(std::string)> memory;
    ASSERT_EQ(mac->copyText(&memory, &original), &memory);
    auto* made = reinterpret_cast<std::string*>(&memory);
    EXPECT_EQ(*made, original);
    made->~basic_string();
}
#endif

TEST_F(MacsCode, ModuleIsLoadedAgainAfterItWasUnloaded)
{
    TearDown();
    EXPECT_EQ(doubles::macSystem(), nullptr);
    SetUp();
    EXPECT_EQ(controller->getParameterCount(), doubles::kParameters);
}

} // namespace
