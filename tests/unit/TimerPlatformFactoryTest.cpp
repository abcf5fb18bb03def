// TimerPlatformFactory gives VSTGUI timers and nothing else, and never crashes.
#include "platform/TimerPlatformFactory.h"

#include "vstgui/lib/cresourcedescription.h"

#include <gtest/gtest.h>

namespace {

using VSTGUI::CPoint;
using VSTGUI::CResourceDescription;
using VSTGUI::PlatformFactoryPtr;
using VSTGUI::PlatformType;

class TimerPlatformFactoryTest : public testing::Test {
protected:
    const PlatformFactoryPtr factory = Steinberg::Vst::platform::makeTimerPlatformFactory();
};

TEST_F(TimerPlatformFactoryTest, OperationsButTheTimersGiveNothing)
{
    EXPECT_FALSE(factory->createFrame(nullptr, {}, nullptr, PlatformType::kDefaultNative, nullptr));
    EXPECT_FALSE(factory->getAllFontFamilies([](const std::string&) { return true; }));
    EXPECT_FALSE(factory->createGradient());
    EXPECT_FALSE(factory->createString("text"));
    EXPECT_FALSE(factory->getGraphicsDeviceFactory().getDeviceForScreen({}));
    const CResourceDescription resource("picture.png");
    const char bytes[] = {'\x89', 'P', 'N', 'G'};
    EXPECT_FALSE(factory->createBitmap(CPoint(1, 1)));
    EXPECT_FALSE(factory->createBitmap(resource));
    EXPECT_FALSE(factory->createBitmapFromPath("picture.png"));
    EXPECT_FALSE(factory->createBitmapFromMemory(bytes, sizeof(bytes)));
    EXPECT_TRUE(factory->createBitmapMemoryPNGRepresentation(nullptr).empty());
    EXPECT_FALSE(factory->createResourceInputStream(resource));
    EXPECT_FALSE(factory->setClipboard(nullptr));
    EXPECT_FALSE(factory->getClipboard());
    EXPECT_EQ(factory->asLinuxFactory(), nullptr);
    EXPECT_EQ(factory->asMacFactory(), nullptr);
    EXPECT_EQ(factory->asWin32Factory(), nullptr);
}

TEST_F(TimerPlatformFactoryTest, GetTicksCountsMillisecondsForward)
{
    const uint64_t before = factory->getTicks();
    EXPECT_GT(before, 0u);
    EXPECT_GE(factory->getTicks(), before);
}

} // namespace
