// SystemText.cpp for the Mac, with the SDK's text class compiled as for a Mac.
#include "platform/SystemText.h"

#include "tests/macos/fakes/FakeCoreFoundation.h"

#include <gtest/gtest.h>

using doubles::FakeCoreFoundation;
using Steinberg::Vst::toSystemCodePage;

namespace {

std::string converted(const std::u16string& text)
{
    return toSystemCodePage(text.data(), text.size());
}

class MacSystemTextTest : public testing::Test {
protected:
    MacSystemTextTest() { FakeCoreFoundation::reset(); }
    ~MacSystemTextTest() override
    {
        EXPECT_EQ(FakeCoreFoundation::liveObjects(), 0u);
        EXPECT_EQ(FakeCoreFoundation::misuses(), 0u);
        FakeCoreFoundation::reset();
    }
};

TEST_F(MacSystemTextTest, ToSystemCodePageUsesTheSystemsDefaultEncoding)
{
    EXPECT_EQ(converted(u"Cubase 7"), "Cubase 7");
    EXPECT_EQ(converted(u"\u00E4\u2020\u2248"), "\x8A\xA0\xC5"); // Mac OS Roman
}

TEST_F(MacSystemTextTest, ToSystemCodePageGivesAQuestionMarkForAMissingCharacter)
{
    EXPECT_EQ(converted(u"a\u3042b"), "a?b");
    EXPECT_EQ(converted(u"a\U0001F3B9b"), "a?b") << "two units are one character";
    EXPECT_EQ(converted(u"a\xD83Cz"), "a?z") << "half a character";
}

TEST_F(MacSystemTextTest, ToSystemCodePageReadsNoMoreThanTheLength)
{
    EXPECT_EQ(toSystemCodePage(u"abcdef", 3), "abc");
    EXPECT_EQ(toSystemCodePage(u"abc", 0), "");
}

TEST_F(MacSystemTextTest, ToSystemCodePageIsEmptyWhenTheConversionFails)
{
    FakeCoreFoundation::failConversions = true;
    EXPECT_EQ(converted(u"abc"), "");
}

} // namespace
