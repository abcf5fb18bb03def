// ValueTexts: the texts of all values of a parameter, which parameters with the same texts share.
#include "controller/ValueTexts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Steinberg::Vst::ValueTexts;

TEST(ValueTexts, AtFindsATextByItsIndex)
{
    ValueTexts texts;
    texts.reserve(3);
    texts.add("Off");
    texts.add("L63");
    texts.add("a text that is longer than the room that was made for it");
    EXPECT_EQ(texts.at(0), "Off");
    EXPECT_EQ(texts.at(1), "L63");
    EXPECT_EQ(texts.at(2), "a text that is longer than the room that was made for it");
}

TEST(ValueTexts, AtFindsATextBehindEmptyOnes)
{
    ValueTexts texts;
    texts.add("");
    texts.add("one");
    texts.add({});
    texts.add("three");
    EXPECT_EQ(texts.at(0), "");
    EXPECT_EQ(texts.at(1), "one");
    EXPECT_EQ(texts.at(2), "");
    EXPECT_EQ(texts.at(3), "three");
}

TEST(ValueTexts, AtIsEmptyWhereThereIsNoText)
{
    ValueTexts texts;
    EXPECT_EQ(texts.at(0), "");
    texts.add("zero");
    EXPECT_EQ(texts.at(-1), "");
    EXPECT_EQ(texts.at(1), "");
    EXPECT_EQ(texts.at(INT64_MAX), "");
    EXPECT_EQ(texts.at(INT64_MIN), "");
}

TEST(ValueTexts, AddKeepsMoreThanAHostCanShowOfALongText)
{
    ValueTexts texts;
    texts.add(std::string(100'000, 'x'));
    texts.add("next");
    // 127 characters of three bytes each.
    EXPECT_GE(texts.at(0).size(), 381u);
    EXPECT_LT(texts.at(0).size(), 1'000u);
    EXPECT_EQ(texts.at(0).find_first_not_of('x'), std::string_view::npos);
    EXPECT_EQ(texts.at(1), "next");
}

/** isSame of two lists, which must be the same both ways round. */
bool areSame(const std::vector<std::string>& some, const std::vector<std::string>& others,
             size_t reserved = 0)
{
    ValueTexts first;
    for (const std::string& text : some)
        first.add(text);
    ValueTexts second;
    second.reserve(reserved);
    for (const std::string& text : others)
        second.add(text);
    EXPECT_EQ(first.isSame(second), second.isSame(first));
    return first.isSame(second);
}

TEST(ValueTexts, IsSameComparesEveryByte)
{
    EXPECT_TRUE(areSame({"Off", "", "L63"}, {"Off", "", "L63"}));
    EXPECT_TRUE(areSame({"Off", "", "L63"}, {"Off", "", "L63"}, 100))
        << "reserved room does not count";
    EXPECT_TRUE(areSame({}, {}));
    EXPECT_FALSE(areSame({"Off", "1", "2"}, {"off", "1", "2"}));
    EXPECT_FALSE(areSame({"Off", "1", "2"}, {"Off", "x", "2"}));
    EXPECT_FALSE(areSame({"Off", "1", "2"}, {"Off", "1", "x"}));
    EXPECT_FALSE(areSame({"Off", "1", "2"}, {"Off", "12", ""}))
        << "the bytes are the same in one piece";
}

TEST(ValueTexts, IsSameComparesTheNumberOfTexts)
{
    EXPECT_FALSE(areSame({"0", "1"}, {"0"}));
    EXPECT_FALSE(areSame({"0", "1"}, {"0", "1", ""}));
    EXPECT_FALSE(areSame({""}, {}));
}

} // namespace
