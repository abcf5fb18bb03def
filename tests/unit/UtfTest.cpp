#include "basics/Utf.h"
#include "platform/SystemText.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Steinberg::Vst;
using Steinberg::char16;

namespace {

std::u16string toString128(std::string_view text)
{
    std::vector<char16> buffer(128, 0xFFFF);
    utf8ToString128(text, buffer.data());
    const auto end = boundedLength(buffer.data(), buffer.size());
    EXPECT_LT(end, 128u) << "no terminator";
    return {buffer.data(), end};
}

} // namespace

TEST(Utf, Utf16ToUtf8WritesEachLengthAndAQuestionMarkForALoneSurrogate)
{
    EXPECT_EQ(utf16ToUtf8(u"\u007F"), "\x7F");
    EXPECT_EQ(utf16ToUtf8(u"\u0080"), "\xC2\x80");
    EXPECT_EQ(utf16ToUtf8(u"\u07FF"), "\xDF\xBF");
    EXPECT_EQ(utf16ToUtf8(u"\u0800"), "\xE0\xA0\x80");
    EXPECT_EQ(utf16ToUtf8(u"\uFFFF"), "\xEF\xBF\xBF");
    EXPECT_EQ(utf16ToUtf8(u"\U00010000"), "\xF0\x90\x80\x80");
    EXPECT_EQ(utf16ToUtf8(u"\U0010FFFF"), "\xF4\x8F\xBF\xBF");
    const char16 high = 0xD83C;
    const char16 low = 0xDFB9;
    EXPECT_EQ(utf16ToUtf8(std::u16string{high}), "?");
    EXPECT_EQ(utf16ToUtf8(std::u16string{low}), "?");
    EXPECT_EQ((utf16ToUtf8(std::u16string{low, high})), "??");
    EXPECT_EQ((utf16ToUtf8(std::u16string{high, high, low, low})), "?\xF0\x9F\x8E\xB9?");
    EXPECT_EQ((utf16ToUtf8(std::u16string{u'a', high, u'b'})), "a?b");
    EXPECT_EQ((utf16ToUtf8(std::u16string{0xD7FF, 0xE000})), "\xED\x9F\xBF\xEE\x80\x80");
}

TEST(Utf, Utf16ToUtf8AndBackKeepsAllButLoneSurrogates)
{
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const std::u16string text{static_cast<char16>(unit)};
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        ASSERT_EQ(utf8ToUtf16(utf16ToUtf8(text)), isSurrogate ? u"?" : text) << unit;
    }
    for (unsigned character = 0x10000; character < 0x110000; character += 0x101) {
        const std::u16string text{static_cast<char16>(0xD800 + ((character - 0x10000) >> 10)),
                                  static_cast<char16>(0xDC00 + ((character - 0x10000) & 0x3FF))};
        const std::string utf8 = utf16ToUtf8(text);
        ASSERT_EQ(utf8.size(), 4u);
        ASSERT_EQ(utf8ToUtf16(utf8), text) << character;
    }
    EXPECT_EQ(utf16ToUtf8({u"a\0b", 3}), std::string("a\0b", 3));
    EXPECT_EQ(utf8ToUtf16({"a\0b", 3}), std::u16string(u"a\0b", 3));
}

TEST(Utf, Utf8ToUtf16GivesAQuestionMarkForEachMalformedByte)
{
    EXPECT_EQ(utf8ToUtf16("\x80"), u"?");      // a trailing byte alone
    EXPECT_EQ(utf8ToUtf16("\xC3"), u"?");      // cut after the first byte
    EXPECT_EQ(utf8ToUtf16("\xC3("), u"?(");    // no trailing byte behind
    EXPECT_EQ(utf8ToUtf16("\xE2\x82"), u"??"); // cut after the second byte
    EXPECT_EQ(utf8ToUtf16("\xE2\x82Z"), u"??Z");
    EXPECT_EQ(utf8ToUtf16("\xF0\x9F\x8E"), u"???"); // cut after the third byte
    EXPECT_EQ(utf8ToUtf16("\xFF\xFE"), u"??");      // never part of UTF-8
    EXPECT_EQ(utf8ToUtf16("\xF8\x88\x80\x80\x80"), u"?????");
    // overlong forms, encoded surrogates, and beyond the last character
    EXPECT_EQ(utf8ToUtf16("\xC0\x80"), u"??");
    EXPECT_EQ(utf8ToUtf16("\xC1\xBF"), u"??");
    EXPECT_EQ(utf8ToUtf16("\xE0\x9F\xBF"), u"???");
    EXPECT_EQ(utf8ToUtf16("\xF0\x8F\xBF\xBF"), u"????");
    EXPECT_EQ(utf8ToUtf16("\xED\xA0\x80"), u"???");      // U+D800
    EXPECT_EQ(utf8ToUtf16("\xED\xBF\xBF"), u"???");      // U+DFFF
    EXPECT_EQ(utf8ToUtf16("\xF4\x90\x80\x80"), u"????"); // U+110000
}

TEST(Utf, Utf8ToString128WritesAtMost127UnitsAndEndsInNoHalfCharacter)
{
    EXPECT_EQ(toString128(""), u"");
    EXPECT_EQ(toString128("R63"), u"R63");
    EXPECT_EQ(toString128(std::string(127, 'x')), std::u16string(127, u'x'));
    EXPECT_EQ(toString128(std::string(128, 'x')), std::u16string(127, u'x'));
    EXPECT_EQ(toString128(std::string(100000, 'x')), std::u16string(127, u'x'));
    const std::string piano = "\xF0\x9F\x8E\xB9"; // two units
    EXPECT_EQ(toString128(std::string(125, 'x') + piano).size(), 127u);
    EXPECT_EQ(toString128(std::string(126, 'x') + piano), std::u16string(126, u'x'));
    EXPECT_EQ(toString128({"ab\0cd", 5}), u"ab");
}

TEST(Utf, BoundedLengthReadsNothingBehindTheBuffer)
{
    const auto full = std::make_unique<char16[]>(3);
    full[0] = full[1] = full[2] = u'x';
    EXPECT_EQ(boundedLength(full.get(), 3), 3u);
    full[1] = 0;
    EXPECT_EQ(boundedLength(full.get(), 3), 1u);
    EXPECT_EQ(boundedLength(full.get(), 0), 0u);
}

#if !defined(__APPLE__)
TEST(SystemText, ToSystemCodePageKeepsAsciiAndGivesAQuestionMarkForTheRest)
{
    const std::u16string text = u"A~\u007F\u0080\u00F6\u3042\U0001F3B9z";
    EXPECT_EQ(toSystemCodePage(text.data(), text.size()), "A~\x7F????z");
    const std::u16string lone{0xDFB9, 0xD83C, u'a', 0xD83C};
    EXPECT_EQ(toSystemCodePage(lone.data(), lone.size()), "??a?");
    EXPECT_EQ(toSystemCodePage(text.data(), 0), "");
}

#endif

TEST(Utf, IsUtf8TellsWellFormedTexts)
{
    for (const char* text :
         {"", "plain", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
          "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "a\xC3\xA4z"})
        EXPECT_TRUE(isUtf8(text)) << text;
    for (const char* text :
         {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC2", "\xC2z", "\xE0\x9F\xBF", "\xE1\x80",
          "\xE1\x80z", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF0\x90\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xFF", "ok\xC3", "\xC3\xA4\xA4"})
        EXPECT_FALSE(isUtf8(text)) << text;
}
