// The host that play pretends to be, as a plug-in sees it.
#include "editorlib/IExternalPlugin.h"
#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "tools/common/Failure.h"
#include "tools/play/host/HostContext.h"
#include "tools/play/host/HostString.h"
#include "tools/play/host/RunLoop.h"

#include <cstring>
#include <gmock/gmock.h>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using testing::ElementsAre;

namespace {

std::string wide(const char16* text)
{
    std::string result;
    for (; *text != 0; ++text)
        result += static_cast<char>(*text);
    return result;
}

std::string packed(const char16* text)
{
    return reinterpret_cast<const char*>(text);
}

/** A timer that counts its ticks and can end itself. */
class CountingTimer final : public U::Implements<U::Directly<Linux::ITimerHandler>> {
public:
    void PLUGIN_API onTimer() override
    {
        ++ticks;
        if (loop && ticks == endAfter)
            loop->unregisterTimer(this);
    }
    int ticks = 0;
    int endAfter = 0;
    RunLoop* loop = nullptr;
};

} // namespace

TEST(HostFamily, ReadsNameAndVersion)
{
    const auto family = parseHostFamily("cubase:7.5.1", true);
    EXPECT_EQ(family.name, "Cubase");
    EXPECT_EQ(family.version, "Version 7.5.1");
    EXPECT_TRUE(family.givesNames);
    EXPECT_TRUE(family.isUnicode);
    EXPECT_FALSE(family.isOlder);
    EXPECT_EQ(parseHostFamily("nuendo:6.5.0", true).name, "Nuendo");
    EXPECT_EQ(parseHostFamily("cubase-le:5.0.0", true).name, "Cubase LE");
    EXPECT_EQ(parseHostFamily("standalone", true).name, "Standalone");
    EXPECT_FALSE(parseHostFamily("cubase", false).isUnicode);
}

TEST(HostFamily, KnowsHostsWithoutNames)
{
    EXPECT_FALSE(parseHostFamily("plain", true).givesNames);
    EXPECT_FALSE(parseHostFamily("plain", true).isOlder);
    EXPECT_TRUE(parseHostFamily("older", true).isOlder);
    EXPECT_FALSE(parseHostFamily("older", true).givesNames);
}

TEST(HostFamily, GivesEveryHostButThePlainOneItsOwnObjects)
{
    for (const char* text : {"cubase", "nuendo:6.5.0", "cubase-le", "standalone", "older"})
        EXPECT_TRUE(parseHostFamily(text, true).hasStudio) << text;
    EXPECT_FALSE(parseHostFamily("plain", true).hasStudio);
}

TEST(HostFamily, RefusesWhatIsNone)
{
    for (const char* text : {"", "reaper", ":7.5.1", "cubase:", "cubase:new", "plain:1.0"})
        EXPECT_THROW(parseHostFamily(text, true), tools::Failure) << text;
}

TEST(HostContext, GivesAUnicodeHostsTextsInWideUnits)
{
    HostContext context(parseHostFamily("cubase-artist:7.5.1", true), owned(new RunLoop));
    const FUnknownPtr<IHostApplicationW> host(&context);
    ASSERT_TRUE(host);
    EXPECT_EQ(wide(host->getApplicationName()), "Cubase Artist");
    EXPECT_EQ(wide(host->getVersionString()), "Version 7.5.1");
    EXPECT_EQ(host->getCharacterSet(), kResultOk);
}

TEST(HostContext, PacksTheTextsOfAHostWithoutUnicode)
{
    HostContext context(parseHostFamily("nuendo:6.5.0", false), owned(new RunLoop));
    const FUnknownPtr<IHostApplicationW> host(&context);
    ASSERT_TRUE(host);
    EXPECT_EQ(packed(host->getApplicationName()), "Nuendo");
    EXPECT_EQ(packed(host->getVersionString()), "Version 6.5.0");
    EXPECT_NE(host->getCharacterSet(), kResultOk);
}

TEST(HostContext, OffersAPlainHostsInterfacesOnly)
{
    HostContext context(parseHostFamily("plain", true), owned(new RunLoop));
    EXPECT_FALSE(FUnknownPtr<IHostApplicationW>(&context));
    EXPECT_FALSE(FUnknownPtr<IHostApplicationA>(&context));
    EXPECT_FALSE(FUnknownPtr<IHostClasses>(&context));
    EXPECT_TRUE(FUnknownPtr<Linux::IRunLoop>(&context));
    const FUnknownPtr<IHostApplication> host(&context);
    ASSERT_TRUE(host);
    String128 name{};
    EXPECT_EQ(host->getName(name), kResultOk);
    EXPECT_EQ(utf8(name), "play");
}

TEST(HostContext, MarksAnOlderHost)
{
    HostContext context(parseHostFamily("older", true), owned(new RunLoop));
    EXPECT_FALSE(FUnknownPtr<IHostApplicationW>(&context));
    EXPECT_TRUE(FUnknownPtr<IHostApplicationA>(&context));
}

TEST(HostClasses, HandsOutNewReferencesOfWhatIsOffered)
{
    auto loop = owned(new RunLoop);
    auto classes = owned(new HostClasses);
    classes->offer(Linux::IRunLoop::iid, loop);
    void* found = nullptr;
    ASSERT_EQ(classes->getHostInterface(Linux::IRunLoop::iid, &found), kResultOk);
    EXPECT_EQ(found, static_cast<Linux::IRunLoop*>(loop.get()));
    EXPECT_EQ(loop->addRef(), 4U); // this one, ours, the offer's and the new one
    loop->release();
    static_cast<Linux::IRunLoop*>(found)->release();
    found = nullptr;
    EXPECT_NE(classes->getHostInterface(IMessage::iid, &found), kResultOk);
    EXPECT_EQ(found, nullptr);
}

TEST(RunLoop, FiresOncePerPassedPeriod)
{
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    EXPECT_EQ(loop->registerTimer(&timer, 50), kResultOk);
    loop->advance(0.049);
    EXPECT_EQ(timer.ticks, 0);
    loop->advance(0.001);
    EXPECT_EQ(timer.ticks, 1);
    loop->advance(0.5);
    EXPECT_EQ(timer.ticks, 11);
    EXPECT_EQ(loop->ticks(), 11);
}

TEST(RunLoop, DoesNotLoseTicksToShortBlocks)
{
    // 44,100 blocks of one sample are one second: 20 periods of 50 ms.
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    loop->registerTimer(&timer, 50);
    for (int i = 0; i < 44100; ++i)
        loop->advance(1.0 / 44100);
    EXPECT_EQ(timer.ticks, 20);
}

TEST(RunLoop, LetsATimerEndItselfFromItsOwnTick)
{
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    timer.loop = loop;
    timer.endAfter = 2;
    loop->registerTimer(&timer, 10);
    loop->advance(1);
    EXPECT_EQ(timer.ticks, 2);
    EXPECT_NE(loop->unregisterTimer(&timer), kResultOk);
}

TEST(RunLoop, RefusesNoHandlerAndNoPeriod)
{
    auto loop = owned(new RunLoop);
    CountingTimer timer;
    EXPECT_NE(loop->registerTimer(nullptr, 50), kResultOk);
    EXPECT_NE(loop->registerTimer(&timer, 0), kResultOk);
    loop->advance(1);
    EXPECT_EQ(timer.ticks, 0);
}

TEST(HostString, ReadsWideTextsUpToTheirEnd)
{
    String128 text{};
    text[0] = 'C';
    text[1] = 0x00E9;
    text[2] = 0x20AC;
    text[3] = 0xD83D;
    text[4] = 0xDE00;
    text[5] = 0xD83D; // without its second half
    text[6] = 'x';
    EXPECT_EQ(utf8(text), "C\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80?x");
    std::fill(std::begin(text), std::end(text), static_cast<char16>('a'));
    EXPECT_EQ(utf8(text), std::string(128, 'a'));
}
