#include "controller/ParameterText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr int kUntouched = 4711;
constexpr int kLargestNumber = std::numeric_limits<int>::max();
constexpr int kSmallestNumber = std::numeric_limits<int>::min();

struct TextRow {
    std::u16string text;
    bool parses;
    int value;
};

void expectRow(TextParser parser, const TextRow& row)
{
    std::string shown;
    for (const char16_t unit : row.text)
        shown += " " + std::to_string(static_cast<unsigned>(unit));
    int value = kUntouched;
    EXPECT_EQ(parser(row.text.c_str(), value) == 0, row.parses) << shown;
    EXPECT_EQ(value, row.parses ? row.value : kUntouched) << shown;
}

std::u16string repeated(size_t count, char16_t unit)
{
    return std::u16string(count, unit);
}

TEST(ParsePlusMinusValue, ReadsANumberBehindWhichOnlyLowCharactersAreRefused)
{
    const TextRow rows[] = {
        {u"0", true, 0},
        {u"127", true, 127},
        {u"-5", true, -5},
        {u"+5", true, 5},
        {u"007", true, 7},
        {u"12dB", true, 12},
        {u"5x", true, 5},
        {u"x", true, 0},
        {u"x5", true, 0},
        {u":", true, 0}, // the first character behind "9"
        {u"-x", true, 0},
        {u"+", true, 0},
        {u"-", true, 0},
        {u"", false, 0},
        {u" 5", false, 0},
        {u"5 ", false, 0},
        {u"- 5", false, 0},
        {u"5.0", false, 0},
        {u"5,0", false, 0},
        {u"5/", false, 0}, // the last character before "0"
        {u"+-5", false, 0},
        {u"-+5", false, 0},
        {u"--", false, 0},
        {u"5-", false, 0},
        {u"5+", false, 0},
        {u"\t5", false, 0},
        {u"5\n", false, 0},
        {u"5\x7F", true, 5},
        {u"5\x80", false, 0},
        {u"5\u00B0", false, 0}, // degree sign: two bytes of 128 and above
        {u"\uFF15", false, 0},  // full-width five
        {u"\u2212"
         u"5",
         false, 0}, // the typographic minus
    };
    for (const TextRow& row : rows)
        expectRow(parsePlusMinusValue, row);
}

TEST(ParsePlusMinusValue, ReadsALoneSurrogateAsAQuestionMarkAndStaysInTheNumberRange)
{
    expectRow(parsePlusMinusValue, {u"5" + repeated(1, 0xD800), true, 5});
    expectRow(parsePlusMinusValue, {repeated(1, 0xDC00) + u"5", true, 0});
    expectRow(parsePlusMinusValue, {repeated(1, 0xD800), true, 0});
    expectRow(parsePlusMinusValue, {u"5\U0001D7D3", false, 0}); // a surrogate pair is four bytes
    expectRow(parsePlusMinusValue, {u"2147483647", true, kLargestNumber});
    expectRow(parsePlusMinusValue, {u"2147483648", true, kLargestNumber});
    expectRow(parsePlusMinusValue, {u"-2147483648", true, kSmallestNumber});
    expectRow(parsePlusMinusValue, {u"-2147483649", true, kSmallestNumber});
    expectRow(parsePlusMinusValue, {u"99999999999999999999999999", true, kLargestNumber});
    expectRow(parsePlusMinusValue, {u"-99999999999999999999999999", true, kSmallestNumber});
}

TEST(ParsePlusMinusValue, SeesTheFirst255BytesOnly)
{
    expectRow(parsePlusMinusValue, {repeated(254, u'0') + u"7", true, 7});
    expectRow(parsePlusMinusValue, {repeated(255, u'0') + u"7", true, 0});
    expectRow(parsePlusMinusValue, {repeated(254, u'0') + u" ", false, 0});
    expectRow(parsePlusMinusValue, {repeated(255, u'0') + u" ", true, 0});
    // Of a character of two bytes the cut leaves the first, which is refused.
    expectRow(parsePlusMinusValue, {repeated(254, u'0') + u"\u00E9", false, 0});
    expectRow(parsePlusMinusValue, {repeated(100000, u'1'), true, kLargestNumber});
}

TEST(ParseLRPanValue, ReadsLeftCentreAndRight)
{
    const TextRow rows[] = {
        {u"C", true, 0},
        {u"c", true, 0},
        {u"L63", true, -63},
        {u"l63", true, -63},
        {u"L1", true, -1},
        {u"R1", true, 1},
        {u"r1", true, 1},
        {u"R63", true, 63},
        {u"R999", true, 999},
        {u"L007", true, -7},
        {u"L5x", true, -5},
        {u"R5x", true, 5},
        {u"", false, 0},
        {u"L", false, 0},
        {u"l", false, 0},
        {u"R", false, 0},
        {u"r", false, 0},
        {u"X", false, 0},
        {u"5", false, 0},
        {u"L0", false, 0},
        {u"R0", false, 0},
        {u"R00", false, 0},
        {u"Lx", false, 0}, // isNumber takes it for a number, which is 0
        {u"Rx5", false, 0},
        {u"X5", false, 0},
        {u"C0", false, 0},
        {u"c1", false, 0},
        {u"CC", false, 0},
        {u"L-5", false, 0},
        {u"R+5", false, 0},
        {u"L 5", false, 0},
        {u" L5", false, 0},
        {u"L5 ", false, 0},
        {u"R5.0", false, 0},
        {u"LL5", false, 0},
        {u"LR5", false, 0},
        {u"\x0C"
         u"5",
         false, 0}, // differs from "L" in more than the case bit
        {u"\x12"
         u"5",
         false, 0},
        {u"L\u00E9", false, 0},
        {u"\u00CC"
         u"5",
         false, 0},
        {u"L\uFF15", false, 0},
        {u"\u2103", false, 0},
    };
    for (const TextRow& row : rows)
        expectRow(parseLRPanValue, row);
}

TEST(ParseLRPanValue, ReadsALoneSurrogateAsAQuestionMarkStaysInTheNumberRangeAndIsCutBehind255Bytes)
{
    expectRow(parseLRPanValue, {u"L5" + repeated(1, 0xDFFF), true, -5});
    expectRow(parseLRPanValue, {u"L" + repeated(1, 0xD800), false, 0});
    expectRow(parseLRPanValue, {repeated(1, 0xD800), false, 0});
    expectRow(parseLRPanValue, {repeated(1, 0xDC00) + u"5", false, 0});
    expectRow(parseLRPanValue, {u"R2147483648", true, kLargestNumber});
    expectRow(parseLRPanValue, {u"L2147483648", true, -kLargestNumber});
    expectRow(parseLRPanValue, {u"R" + repeated(253, u'0') + u"7", true, 7});
    expectRow(parseLRPanValue, {u"R" + repeated(254, u'0') + u"7", false, 0});
    expectRow(parseLRPanValue, {u"R7" + repeated(253, u'x') + u" ", true, 7});
}

TEST(ParameterText, ParsersRefuseANullText)
{
    int value = kUntouched;
    EXPECT_NE(parsePlusMinusValue(nullptr, value), 0);
    EXPECT_NE(parseLRPanValue(nullptr, value), 0);
    EXPECT_EQ(value, kUntouched);
}

TEST(IsNumber, AnswersZeroForANumberAndOneOtherwise)
{
    EXPECT_EQ(isNumber("0"), 0);
    EXPECT_EQ(isNumber("63"), 0);
    EXPECT_EQ(isNumber("x"), 0);
    EXPECT_EQ(isNumber(":"), 0);
    EXPECT_EQ(isNumber("\x7F"), 0);
    EXPECT_EQ(isNumber(""), 1);
    EXPECT_EQ(isNumber(nullptr), 1);
    EXPECT_EQ(isNumber("/"), 1);
    EXPECT_EQ(isNumber("5/5"), 1);
    EXPECT_EQ(isNumber("-5"), 1);
    EXPECT_EQ(isNumber("+5"), 1);
    EXPECT_EQ(isNumber(" 5"), 1);
    EXPECT_EQ(isNumber("5.0"), 1);
    EXPECT_EQ(isNumber("5\x01"), 1);
    EXPECT_EQ(isNumber("5\x80"), 1);
    EXPECT_EQ(isNumber("\xFF"), 1);
}

} // namespace
