#include "tests/doubles/ScriptedHost.h"

#include <cstring>
#include <gmock/gmock.h>

using namespace Steinberg;
using doubles::HostFamily;
using doubles::HostText;
using doubles::ScriptedHost;
using testing::ElementsAre;
using namespace std::string_literals;

namespace {

std::string bytesOf(const HostText& text, size_t count)
{
    return {reinterpret_cast<const char*>(text.get(false)), count};
}

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

TEST(HostText, IsBytesAndOneZeroByteInAnOlderHost)
{
    EXPECT_EQ(bytesOf(HostText("Nu"), 3), "Nu\0"s);
    EXPECT_EQ(bytesOf(HostText("Nue"), 4), "Nue\0"s);
}

TEST(HostText, HasWhatStoodThereBeforeBehindItsZeroByte)
{
    const HostText text("Nu\0Cub"s);
    EXPECT_EQ(bytesOf(text, 7), "Nu\0Cub\0"s);
    EXPECT_THAT(unitsOf(text.get(true), 4),
                ElementsAre(unsigned{'N'}, unsigned{'u'}, 0u, unsigned{'C'}));
}

TEST(HostText, EmptyIsATerminatorAndNullIsNull)
{
    EXPECT_EQ(HostText("").get(true)[0], 0);
    EXPECT_EQ(bytesOf(HostText(""), 1), "\0"s);
    EXPECT_EQ(HostText(nullptr).get(true), nullptr);
    EXPECT_EQ(HostText(nullptr).get(false), nullptr);
}

TEST(HostText, RawUnitsStayWhatTheyAre)
{
    const auto text = HostText::raw(u"\xD800z");
    EXPECT_THAT(unitsOf(text.get(true), 3), ElementsAre(0xD800u, unsigned{'z'}, 0u));
    EXPECT_EQ(bytesOf(text, 5), "\0\xD8z\0\0"s);
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

TEST(HostValueDouble, OfAnOlderHostEndsATextWithOneByteAndLeavesTheRestOfTheBuffer)
{
    doubles::Trace trace;
    ScriptedHost older(trace, HostFamily::withoutUnicode("Cubase", "4.0.1"));
    auto& value = older.devices.mixer().value("output");
    value.text = "abcd";

    std::vector<char16> buffer(4, 0x7F7F);
    int32 size = 4;
    value.getString(buffer.data(), &size);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer.data()), 8), "abcd\0\x7F\x7F\x7F"s);
    EXPECT_EQ(size, 2);

    size = 2;
    value.getString(buffer.data(), &size);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer.data()), 4), "abc\0"s);

    value.terminates = false;
    size = 2;
    value.getString(buffer.data(), &size);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer.data()), 4), "abcd"s);
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
