// The host that play pretends to be, as a plug-in sees it.
#include "editorlib/IExternalPlugin.h"
#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "tools/common/Failure.h"
#include "tools/play/host/HostContext.h"
#include "tools/play/host/HostString.h"
#include "tools/play/host/HostTexts.h"

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
    auto mark = owned(new OlderHostMark);
    auto classes = owned(new HostClasses);
    classes->offer(IHostApplicationA::iid, mark);
    void* found = nullptr;
    ASSERT_EQ(classes->getHostInterface(IHostApplicationA::iid, &found), kResultOk);
    EXPECT_EQ(found, static_cast<IHostApplicationA*>(mark.get()));
    EXPECT_EQ(mark->addRef(), 4U); // this one, ours, the offer's and the new one
    mark->release();
    static_cast<IHostApplicationA*>(found)->release();
    found = nullptr;
    EXPECT_NE(classes->getHostInterface(IMessage::iid, &found), kResultOk);
    EXPECT_EQ(found, nullptr);
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
