// What the Mac's machine code asks of a Mac, in a scripted host with a scripted library: the run
// loop's timer, the application's current event, and Core Foundation's objects.
#include "tests/doubles/MacsCode.h"
#include "tests/plugin/PlugInFixture.h"

#include "pluginterfaces/gui/iplugview.h"

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kVolume1 = 37012000;
constexpr unsigned kOlderWheelEvent = 10;
constexpr unsigned kScrollEvent = 11;

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
        // A range of one value has no texts to fetch, which takes most of the time.
        library->defaultParameter = {0, 0, 0, 0, {}};
        library->setParameter(kVolume1, {0, 0, 4, 0, {}});
        PlugInFixture::SetUp();
        mac = doubles::macSystem();
        ASSERT_TRUE(mac) << "the plug-in's code is no Mac's";
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

    std::vector<std::string> turnWheel(float distance)
    {
        const auto view = owned(controller->createView(ViewType::kEditor));
        EXPECT_TRUE(view);
        trace.clear();
        EXPECT_EQ(view->onWheel(distance), kResultOk);
        return trace.textsOf({"library.onWheel"});
    }
};

/** A host whose changes of the editor wait for the timer. */
class MacsTimer : public MacsCode {
protected:
    MacsTimer()
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

TEST_F(MacsTimer, TicksEvery50MillisecondsOnTheSystemsRunLoop)
{
    EXPECT_EQ(mac->timers(), 1u);
    EXPECT_NEAR(mac->interval(), 0.05, 1e-6);
    EXPECT_NEAR(mac->tolerance(), 0.005, 1e-6);
}

TEST_F(MacsTimer, PassesTheEditorsChangesOn)
{
    library->turn(kVolume1, 1);
    EXPECT_EQ(trace.count("host.performEdit"), 0u);
    mac->fireTimers();
    EXPECT_THAT(trace.textsOf({"host.performEdit"}),
                ElementsAre("host.performEdit(37012000, 0.25)"));
}

TEST_F(MacsCode, HalvesTheDistanceOfAScrollEventAlone)
{
    EXPECT_THAT(turnWheel(3), ElementsAre("library.onWheel(3)"));
    mac->setCurrentEvent(kOlderWheelEvent);
    EXPECT_THAT(turnWheel(3), ElementsAre("library.onWheel(3)"));
    mac->setCurrentEvent(kScrollEvent);
    EXPECT_THAT(turnWheel(3), ElementsAre("library.onWheel(1.5)"));
    mac->setCurrentEvent(0);
}

/** The SDK writes numbers with Core Foundation's formats. */
TEST_F(MacsCode, WritesNumbersAsTexts)
{
    String128 text = {};
    EXPECT_EQ(controller->getParamStringByValue(kVolume1, 0.5, text), kResultOk);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(text)), u"2");
}

/** Unwound through the Mac's frames by their own tables. */
TEST_F(MacsCode, LetsNoExceptionOfTheLibraryOut)
{
    library->throwAt("onWheel");
    const auto view = owned(controller->createView(ViewType::kEditor));
    EXPECT_NO_THROW(view->onWheel(1));
    EXPECT_EQ(trace.count("library.onWheel(1)"), 1u);
}

#ifdef __aarch64__
/** Apple's callers on arm64 may go on with what a constructor returns. No call of today's code
   does, so that only this test tells. */
TEST_F(MacsCode, GetsTheObjectBackFromTheLibrarysConstructors)
{
    const std::string original(100, 'x');
    std::aligned_storage_t<sizeof(std::string), alignof(std::string)> memory;
    ASSERT_EQ(mac->copyText(&memory, &original), &memory);
    auto* made = reinterpret_cast<std::string*>(&memory);
    EXPECT_EQ(*made, original);
    made->~basic_string();
}
#endif

TEST_F(MacsCode, IsLoadedAnewAfterItWasUnloaded)
{
    TearDown();
    EXPECT_EQ(doubles::macSystem(), nullptr);
    SetUp();
    EXPECT_EQ(controller->getParameterCount(), 225);
}

} // namespace
