#include "controller/TrackRouting.h"
#include "controller/VstK2xController.h"
#include "tests/doubles/HostAndLibraryDouble.h"
#include "tests/unit/BoundController.h"

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;

namespace {

HostFamily unicodeHost(const std::string& name, const std::string& version = "1.0.0")
{
    return HostFamily::named(name, version);
}

HostFamily wideNameHost(const HostText& name)
{
    auto family = HostFamily::cubase("7.5.1");
    family.name = name;
    return family;
}

/** getVSTHostType's answer, which the library must have been told too. */
int hostTypeIn(const HostFamily& family)
{
    BoundController bound(family);
    std::string told;
    bound.library.onCall = [&](const std::string& text) {
        if (text.rfind("library.setHostType(", 0) == 0)
            told = text;
    };
    bound.initialize();
    const int type = bound.controller->getVSTHostType();
    EXPECT_EQ(told, "library.setHostType(" + std::to_string(type) + ")");
    return type;
}

TEST(GetVSTHostType, IsZeroForTheCubaseFamily)
{
    for (const char* name : {"Cubase", "Cubase 6", "Cubase LE", "Cubase AI 5", "Cubase Studio 5",
                             "Cubase Artist 6.5", "Cubase Essential 5", "Cubase Elements 7",
                             "Nuendo", "NUENDO 5", "cubase", "My Cubase clone"})
        EXPECT_EQ(hostTypeIn(unicodeHost(name)), 0) << name;
    EXPECT_EQ(hostTypeIn(HostFamily::withoutUnicode("Cubase", "5.0.0")), 0);
}

TEST(GetVSTHostType, IsOneForTheExactNameOfTheStandaloneHost)
{
    EXPECT_EQ(hostTypeIn(HostFamily::standalone()), 1);
    EXPECT_EQ(hostTypeIn(HostFamily::withoutUnicode("Standalone", "1.0.0")), 1);
    EXPECT_EQ(hostTypeIn(HostFamily::withoutUnicode(std::string("Standalone\0 2", 13), "1.0.0")),
              1);
    for (const char* name :
         {"standalone", "Standalone ", " Standalone", "Standalone 2", "Standalon", "STANDALONE"})
        EXPECT_EQ(hostTypeIn(unicodeHost(name)), 2) << name;
}

TEST(GetVSTHostType, IsTwoForAnyOtherHost)
{
    EXPECT_EQ(hostTypeIn(unicodeHost("Plain Host")), 2);
    EXPECT_EQ(hostTypeIn(unicodeHost("Cubas")), 2);
    EXPECT_EQ(hostTypeIn(wideNameHost("")), 2);
    EXPECT_EQ(hostTypeIn(wideNameHost(nullptr)), 2);
    EXPECT_EQ(hostTypeIn(wideNameHost(HostText::raw(std::u16string(1, 0xD800)))), 2);
    EXPECT_EQ(hostTypeIn(BoundController::nameless()), 2);
}

TEST(GetVSTHostType, IsTwoWithoutAHostOrItsAnswers)
{
    const auto controller = owned(new VstK2xController);
    EXPECT_EQ(controller->getVSTHostType(), 2);
    EXPECT_FALSE(controller->isUnicodeAppHost());
    BoundController bound;
    bound.initialize();
    bound.controller->terminate();
    EXPECT_EQ(bound.controller->getVSTHostType(), 2);
    EXPECT_FALSE(bound.controller->isUnicodeAppHost());
}

TEST(GetVSTHostType, IsZeroForAnOldHostWithTheSmallerInterface)
{
    EXPECT_EQ(hostTypeIn(HostFamily::applicationAOnly()), 0);
    // The larger interface decides when both are there.
    auto both = unicodeHost("Plain Host");
    both.hasApplicationA = true;
    EXPECT_EQ(hostTypeIn(both), 2);
}

TEST(GetVSTHostType, IsTwoForAHostThatThrowsWhichIsNotUnicode)
{
    for (const char* call : {"getApplicationName", "getVersionString", "getCharacterSet",
                             "query(context, IHostApplicationW)"}) {
        BoundController bound;
        bound.host.throwAt(call);
        std::string told;
        bound.library.onCall = [&](const std::string& text) {
            if (text.rfind("library.setHostType(", 0) == 0)
                told = text;
        };
        bound.initialize();
        EXPECT_EQ(told, "library.setHostType(2)") << call;
        EXPECT_EQ(bound.controller->getVSTHostType(), 2) << call;
        bound.host.clearFaults();
        EXPECT_EQ(bound.controller->getVSTHostType(), 0) << call;
        bound.host.throwAt("getCharacterSet");
        EXPECT_FALSE(bound.controller->isUnicodeAppHost());
    }
}

TEST(IsUnicodeAppHost, IsTrueForCharacterSetZero)
{
    BoundController bound;
    bound.initialize();
    EXPECT_TRUE(bound.controller->isUnicodeAppHost());
    for (const tresult answer : std::vector<tresult>{kResultFalse, kNotImplemented, -1, 256}) {
        bound.host.context.characterSet = answer;
        EXPECT_FALSE(bound.controller->isUnicodeAppHost()) << answer;
    }
}

TEST(IsUnicodeAppHost, IsFalseInAHostThatDoesNotSay)
{
    for (const auto& family : {BoundController::nameless(), BoundController::withoutUnicode(),
                               HostFamily::applicationAOnly()}) {
        BoundController bound(family);
        bound.initialize();
        EXPECT_FALSE(bound.controller->isUnicodeAppHost());
    }
}

bool countsAsNew(const HostFamily& family)
{
    Trace trace;
    ScriptedHost host(trace, family);
    HostAndLibraryDouble context(host, nullptr);
    TrackRouting routing(context, context.dependent);
    routing.readHostVersion();
    return routing.isNewHostVersion();
}

TEST(ReadHostVersion, TakesVersionsFrom75AndOfNuendoFrom65ForNew)
{
    const struct {
        const char* name;
        const char* version;
        bool isNew;
    } rows[] = {
        {"Cubase", "7.5.0", true},
        {"Cubase", "7.5.1", true},
        {"Cubase", "8.0.0", true},
        {"Cubase", "10.0.5", true},
        {"Cubase", "7.4.9", false},
        {"Cubase", "6.9.9", false},
        {"Cubase", "7.5", false}, // of two numbers the minor one is not read
        {"Cubase", "8.1", true},  // the minor one does not matter here
        {"Cubase", "8", false},   // no dot, no version
        {"Cubase", "", false},
        {"Cubase", "x.y.z", false},
        {"Cubase Artist", "7.5.0", true},
        {"Cubase Artist", "6.5.0", false},
        {"Cubase AI", "7.5.0", true},
        {"Cubase Elements", "7.5.0", true},
        {"Cubase", "7.5.", true}, // of three numbers the last may be empty
        {"Cubase Elements", "7.4.0", false},
        {"Cubase LE", "7.5.0", false},
        {"Cubase LE", "99.0.0", false},
        {"Nuendo", "6.5.0", true},
        {"Nuendo", "7.0.0", true},
        {"Nuendo", "6.4.9", false},
        {"Nuendo", "6.5", false},
        {"Nuendo", "5.9.9", false},
        {"Plain Host", "7.5.0", true},
        {"Plain Host", "7.4.0", false},
        {"Standalone", "1.0.0", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(countsAsNew(unicodeHost(row.name, row.version)), row.isNew)
            << row.name << ' ' << row.version;
}

TEST(ReadHostVersion, TakesAHostWithoutUnicodeOrWithoutTheInterfaceForOld)
{
    Trace trace;
    ScriptedHost host(trace);
    HostAndLibraryDouble context(host, nullptr);
    TrackRouting routing(context, context.dependent);
    routing.readHostVersion();
    ASSERT_TRUE(routing.isNewHostVersion());
    context.hostContext.set(nullptr);
    routing.readHostVersion();
    EXPECT_FALSE(routing.isNewHostVersion()) << "a life without a host does not keep the answer";
    EXPECT_FALSE(countsAsNew(HostFamily::withoutUnicode("Cubase", "9.0.0")));
    EXPECT_FALSE(countsAsNew(HostFamily::applicationAOnly()));
    EXPECT_FALSE(countsAsNew(HostFamily::plain()));
}

} // namespace
