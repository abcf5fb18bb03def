#include "support/DAWInfo.h"
#include "hostapi/IHostApplicationW.h"
#include "tools/host/HostText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Steinberg;
using namespace Steinberg::Vst;
using Steinberg::Vst::play::HostText;
using namespace std::string_literals;

static_assert(std::has_virtual_destructor_v<DAWInfo>);

namespace {

/** A host, with or without Unicode, that gives these texts. */
class Application : public IHostApplicationW {
public:
    Application(HostText itsName, HostText itsVersion, bool hasUnicode = true)
    : isUnicode(hasUnicode)
    , name(std::move(itsName))
    , version(std::move(itsVersion))
    {
    }

    virtual ~Application() { EXPECT_EQ(references, 0) << "DAWInfo takes no reference"; }

    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return static_cast<uint32>(++references); }
    uint32 PLUGIN_API release() override { return static_cast<uint32>(--references); }

    const char16* PLUGIN_API getApplicationName() override { return name.get(isUnicode); }
    const char16* PLUGIN_API getVersionString() override { return version.get(isUnicode); }
    tresult PLUGIN_API getCharacterSet() override { return isUnicode ? kResultOk : kResultFalse; }

private:
    bool isUnicode;
    HostText name;
    HostText version;
    int references = 0;
};

using Version = std::vector<int32>;

Version versionOf(const DAWInfo& info)
{
    return {info.getMajorVersion(), info.getMinorVersion(), info.getSubVersion()};
}

Version parse(const HostText& text, bool isUnicode = true)
{
    Application application("Cubase", text, isUnicode);
    return versionOf(DAWInfo(&application));
}

int32 typeOf(const HostText& name, bool isUnicode = true)
{
    Application application(name, nullptr, isUnicode);
    return DAWInfo(&application).getHostType();
}

std::vector<uint16> unitsOf(std::u16string_view text)
{
    std::vector<uint16> units(text.begin(), text.end());
    units.push_back(0);
    return units;
}

int indexOf(std::u16string_view text)
{
    return DAWInfo(nullptr).GetNumberStringIndex(unitsOf(text).data());
}

} // namespace

TEST(DAWInfo, GetHostTypeIsThatOfTheTablesFirstProductAnywhereInTheNameInAnyCase)
{
    EXPECT_EQ(typeOf("Cubase Studio 5"), 3);
    EXPECT_EQ(typeOf("Cubase Artist 6.5"), 3);
    EXPECT_EQ(typeOf("Cubase Essential 5"), 2);
    EXPECT_EQ(typeOf("Cubase Elements 7"), 2);
    EXPECT_EQ(typeOf("Cubase AI 7"), 1);
    EXPECT_EQ(typeOf("Cubase LE 5"), 0);
    EXPECT_EQ(typeOf("Cubase 6"), 4);
    EXPECT_EQ(typeOf("Nuendo 5"), 5);
    EXPECT_EQ(typeOf("Some Studio"), 6);
    EXPECT_EQ(typeOf(""), 6);
    EXPECT_EQ(typeOf("NUENDO 5"), 5);
    EXPECT_EQ(typeOf("the cubase le edition"), 0);
    EXPECT_EQ(typeOf("Cub ase"), 6);
    EXPECT_EQ(typeOf("Nuendo with Cubase"), 4);
    EXPECT_EQ(typeOf("Cubase LE AI Elements"), 0);
    EXPECT_EQ(typeOf("Cubase AI or Cubase LE"), 1);
    EXPECT_EQ(typeOf("Cubase LE or Cubase Essential"), 2);
    EXPECT_EQ(typeOf("Cubase Elements or Cubase Artist"), 3);
}

TEST(DAWInfo, GetHostTypeReadsThePackedNameOfAHostWithoutUnicode)
{
    EXPECT_EQ(typeOf("Nuendo 4", false), 5);
    EXPECT_EQ(typeOf("Cubase LE 4", false), 0);
    EXPECT_EQ(typeOf("Cubase5", false), 4);
    EXPECT_EQ(typeOf("Some\0Cubase"s, false), 6); // a longer name stood there before
}

TEST(DAWInfo, AnalyzeDAWInfoKnowsNothingWithoutAHost)
{
    DAWInfo info(nullptr);
    EXPECT_EQ(info.getHostType(), 6);
    EXPECT_EQ(versionOf(info), (Version{-1, -1, -1}));
    EXPECT_FALSE(info.AnalyzeDAWInfo(nullptr));
}

TEST(DAWInfo, ConstructorReadsNameAndVersionWithoutEachOther)
{
    Application nameOnly("Cubase 6", nullptr);
    const DAWInfo named(&nameOnly);
    EXPECT_EQ(named.getHostType(), 4);
    EXPECT_EQ(versionOf(named), (Version{-1, -1, -1}));

    Application versionOnly(nullptr, "Version 6.0.7");
    const DAWInfo versioned(&versionOnly);
    EXPECT_EQ(versioned.getHostType(), 6);
    EXPECT_EQ(versionOf(versioned), (Version{6, 0, 7}));
}

TEST(DAWInfo, AnalyzeDAWInfoOfAnotherHostGivesTheTypeAndNoVersionToAnObjectWithoutHost)
{
    Application application("Nuendo 6", "Version 6.5.0");
    DAWInfo info(nullptr);
    EXPECT_TRUE(info.AnalyzeDAWInfo(&application));
    EXPECT_EQ(info.getHostType(), 5);
    EXPECT_EQ(versionOf(info), (Version{-1, -1, -1}));
}

TEST(DAWInfo, AnalyzeDAWInfoReadsVersionsAsTheConstructorsHostWritesThem)
{
    Application own("Cubase", nullptr, false);
    Application other("Nuendo", "Version 12.34.56");
    DAWInfo info(&own);
    EXPECT_TRUE(info.AnalyzeDAWInfo(&other));
    EXPECT_EQ(info.getHostType(), 5);
    EXPECT_EQ(versionOf(info), (Version{1, 3, 5})); // read as bytes, of one character
}

TEST(DAWInfo, ConstructorReadsAVersionsThreeParts)
{
    EXPECT_EQ(parse("Version 6.0.7 build 123"), (Version{6, 0, 7}));
    EXPECT_EQ(parse("7.5.20"), (Version{7, 5, 20}));
    EXPECT_EQ(parse("v10.0.30.277"), (Version{10, 0, 30}));
    // Of two parts the major number alone is read.
    EXPECT_EQ(parse("6.5"), (Version{6, -1, -1}));
    EXPECT_EQ(parse("Version 7."), (Version{7, -1, -1}));
    // Without a digit or without a dot there is no version.
    EXPECT_EQ(parse(""), (Version{-1, -1, -1}));
    EXPECT_EQ(parse("Version"), (Version{-1, -1, -1}));
    EXPECT_EQ(parse("a.b.c"), (Version{-1, -1, -1}));
    EXPECT_EQ(parse("Version 7"), (Version{-1, -1, -1}));
    EXPECT_EQ(parse("v.7"), (Version{-1, -1, -1}));
    // An empty part is skipped, one without digits is zero.
    EXPECT_EQ(parse("7..3"), (Version{7, -1, 3}));
    EXPECT_EQ(parse("7.x."), (Version{7, 0, -1}));
    EXPECT_EQ(parse("7.x.y"), (Version{7, 0, 0}));
    EXPECT_EQ(parse("7x.5 beta.-2"), (Version{7, 5, -2}));
    // The low 32 bits of a number count.
    EXPECT_EQ(parse("4294967303.5.0"), (Version{7, 5, 0}));
    EXPECT_EQ(parse("99999999999999999999.5.0"), (Version{-1, 5, 0}));
}

TEST(DAWInfo, ConstructorFindsNoVersionInAHostWithoutUnicode)
{
    Application application("Nuendo 4", "Version 4.3.0 Build 371", false);
    const DAWInfo info(&application);
    EXPECT_EQ(info.getHostType(), 5);
    EXPECT_EQ(versionOf(info), (Version{-1, -1, -1}));
}

TEST(DAWInfo, ConstructorEndsAPackedVersionAtItsZeroByte)
{
    const Version none{-1, -1, -1};
    // The bytes behind the zero byte would read as "9.5.0" in 16-bit units.
    EXPECT_EQ(parse("\0x"s + "9\0.\0005\0.\0000\0"s, false), none);
    EXPECT_EQ(parse("4.30\0x"s + "9\0.\0005\0.\0000\0"s, false), none);
    // As one 16-bit unit "3" and the zero byte would be a digit, with ".5.0" behind it.
    EXPECT_EQ(parse("4.3\0"s + ".\0005\0.\0000\0"s, false), none);
    EXPECT_EQ(parse("4.3", false), none);
    EXPECT_EQ(parse("", false), none);
}

TEST(DAWInfo, ConstructorReadsHostileTextsAsFarAsTheyGo)
{
    Application surrogates(HostText::raw({0xD800, u'N', u'u', u'e', u'n', u'd', u'o', 0xDC00}),
                           HostText::raw({0xDBFF, u'7', 0xD800, u'.', u'5', u'.', 0xDFFF}));
    const DAWInfo odd(&surrogates);
    EXPECT_EQ(odd.getHostType(), 5);
    EXPECT_EQ(versionOf(odd), (Version{7, 5, 0}));

    Application cut("Some\0Cubase"s, "7.\0005.3"s);
    const DAWInfo ended(&cut);
    EXPECT_EQ(ended.getHostType(), 6);
    EXPECT_EQ(versionOf(ended), (Version{7, -1, -1}));

    Application endless(std::string(100000, 'x') + "Cubase", std::string(100000, '1'));
    const DAWInfo late(&endless);
    EXPECT_EQ(late.getHostType(), 4);
    EXPECT_EQ(versionOf(late), (Version{-1, -1, -1}));
}

TEST(DAWInfo, SetVersionInfoFromStringKeepsWhatANewTextLacks)
{
    Application application("Cubase", "7.5.2");
    DAWInfo info(&application);
    info.SetVersionInfoFromString(nullptr);
    EXPECT_EQ(versionOf(info), (Version{7, 5, 2}));
    info.SetVersionInfoFromString(unitsOf(u"none").data());
    EXPECT_EQ(versionOf(info), (Version{7, 5, 2}));
    info.SetVersionInfoFromString(unitsOf(u"8.0").data());
    EXPECT_EQ(versionOf(info), (Version{8, 5, 2}));
}

TEST(DAWInfo, GetNumberStringIndexFindsTheFirstAsciiDigit)
{
    EXPECT_EQ(indexOf(u"7.5"), 0);
    EXPECT_EQ(indexOf(u"Version 7.5"), 8);
    EXPECT_EQ(indexOf(u"none"), -1);
    EXPECT_EQ(indexOf(u""), -1);
    EXPECT_EQ(DAWInfo(nullptr).GetNumberStringIndex(nullptr), -1);
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        const bool isDigit = unit >= 0x30 && unit <= 0x39;
        ASSERT_EQ(indexOf({std::u16string{u'x', static_cast<char16>(unit)}}), isDigit ? 1 : -1)
            << unit;
    }
}

TEST(DAWInfo, CompareVersionGoesFieldByFieldAndSkipsNegativeArguments)
{
    Application application("Cubase", "Version 7.5.2");
    const DAWInfo info(&application);
    EXPECT_EQ(info.CompareVersion(7, 5, 2), 0);
    EXPECT_EQ(info.CompareVersion(7, 5, 1), 1);
    EXPECT_EQ(info.CompareVersion(7, 5, 3), -1);
    EXPECT_EQ(info.CompareVersion(7, 4, 9), 1);
    EXPECT_EQ(info.CompareVersion(7, 6, 0), -1);
    EXPECT_EQ(info.CompareVersion(6, 9, 9), 1);
    EXPECT_EQ(info.CompareVersion(8, 0, 0), -1);
    EXPECT_EQ(info.CompareVersion(0, 0, 0), 1);
    EXPECT_EQ(info.CompareVersion(7, 5, -1), 0);
    EXPECT_EQ(info.CompareVersion(7, -1, -1), 0);
    EXPECT_EQ(info.CompareVersion(-1, -1, -1), 0);
    EXPECT_EQ(info.CompareVersion(-1, 6, -1), -1);
    EXPECT_EQ(info.CompareVersion(-1, 5, 1), 1);
    EXPECT_EQ(info.CompareVersion(-1, -1, 3), -1);
    EXPECT_EQ(info.CompareVersion(7, -5, 1), 1);
    Application newer("Cubase", "8.0.0");
    EXPECT_EQ(DAWInfo(&newer).CompareVersion(7, 5, -1), 1);
}

TEST(DAWInfo, CompareVersionTakesAnUnknownFieldForOlder)
{
    Application application("Cubase", "7.5");
    const DAWInfo info(&application);
    EXPECT_EQ(info.CompareVersion(7, 5, -1), -1);
    EXPECT_EQ(info.CompareVersion(7, 0, 0), -1);
    EXPECT_EQ(info.CompareVersion(7, -1, 0), -1);
    EXPECT_EQ(info.CompareVersion(7, -1, -1), 0);
    EXPECT_EQ(DAWInfo(nullptr).CompareVersion(0, -1, -1), -1);
    EXPECT_EQ(DAWInfo(nullptr).CompareVersion(-1, -1, -1), 0);
}
