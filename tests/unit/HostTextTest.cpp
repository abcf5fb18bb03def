#include "tests/doubles/ScriptedHost.h"

#include <cstring>
#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::HostFamily;
using doubles::HostText;
using doubles::ScriptedHost;
using testing::ElementsAre;

namespace {

std::vector<unsigned> unitsOf(const char16* text, size_t count)
{
    return {text, text + count};
}

} // namespace

TEST(HostText, IsUtf16InAUnicodeHost)
{
    const HostText text("A\xC3\xA4"); // "A" and a with diaeresis, U+00E4
    EXPECT_THAT(unitsOf(text.get(true), 3), ElementsAre(0x41u, 0xE4u, 0u));
}

TEST(HostText, PacksTwoBytesIntoAUnitInAnOlderHost)
{
    // "Nu" is the bytes 4E 75, so one little-endian unit 754E; then the 8-bit terminator's unit.
    const HostText even("Nu");
    EXPECT_THAT(unitsOf(even.get(false), 2), ElementsAre(0x754Eu, 0u));

    // "Nue": the third byte shares its unit with the 8-bit terminator, a zero unit still follows.
    const HostText odd("Nue");
    EXPECT_THAT(unitsOf(odd.get(false), 3), ElementsAre(0x754Eu, 0x0065u, 0u));
    EXPECT_STREQ(reinterpret_cast<const char*>(odd.get(false)), "Nue");
}

TEST(HostText, EmptyIsATerminatorAndNullIsNull)
{
    EXPECT_EQ(HostText("").get(true)[0], 0);
    EXPECT_EQ(HostText("").get(false)[0], 0);
    EXPECT_EQ(HostText(nullptr).get(true), nullptr);
    EXPECT_EQ(HostText(nullptr).get(false), nullptr);
}

TEST(HostText, RawUnitsStayWhatTheyAre)
{
    const auto text = HostText::raw(u"\xD800z");
    EXPECT_THAT(unitsOf(text.get(true), 3), ElementsAre(0xD800u, unsigned{'z'}, 0u));
    EXPECT_THAT(unitsOf(text.get(false), 3), ElementsAre(0xD800u, unsigned{'z'}, 0u));
}

TEST(HostValueDouble, CutsATextToTheBufferAndCanLeaveOutTheTerminator)
{
    doubles::Trace trace;
    ScriptedHost host(trace);
    auto& value = host.devices.mixer().value("output");
    value.text = "abcdef";

    std::vector<char16> buffer(6, 0x7F);
    int32 size = 4;
    value.getString(buffer.data(), &size);
    EXPECT_THAT(buffer, ElementsAre('a', 'b', 'c', 0, 0x7F, 0x7F));

    value.terminates = false;
    size = 4;
    value.getString(buffer.data(), &size);
    EXPECT_THAT(buffer, ElementsAre('a', 'b', 'c', 'd', 0x7F, 0x7F));
    EXPECT_EQ(size, 4);
}

TEST(HostPortDouble, GivesItsIdInTheHostsCharacterSet)
{
    doubles::Trace trace;
    ScriptedHost host(trace);
    ScriptedHost older(trace, HostFamily::withoutUnicode("Cubase", "4.0.1"));

    StringObject text;
    ASSERT_TRUE(host.ports.audioInput("id-1", "Tavrin 1").getPortId(text));
    EXPECT_TRUE(text.isWideString());
    ASSERT_TRUE(older.ports.audioInput("id-1", "Tavrin 1").getPortId(text));
    EXPECT_FALSE(text.isWideString());
    EXPECT_STREQ(text.text8(), "id-1");
}
