#include "support/CharacterConvert.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

/** Packs bytes into 16-bit units, as a host without Unicode does. The heap block ends right behind
    the last unit, so that a sanitizer sees any read past it. */
std::unique_ptr<char16[]> pack(std::string_view bytes)
{
    auto units = std::make_unique<char16[]>((bytes.size() + 1) / 2);
    std::memcpy(units.get(), bytes.data(), bytes.size());
    return units;
}

std::unique_ptr<char16[]> unterminated(std::u16string_view text)
{
    auto units = std::make_unique<char16[]>(text.size());
    std::copy(text.begin(), text.end(), units.get());
    return units;
}

std::string packedText(std::string_view bytes, int32 length = -1)
{
    return CharacterConvert(pack(bytes).get(), false, length).getStdString();
}

int32 number(const char16* text, int base = 10)
{
    return CharacterConvert(text, true).getStrToL(base);
}

} // namespace

TEST(CharacterConvert, GetStdStringGivesUtf8OfUtf16WithAQuestionMarkForALoneSurrogate)
{
    const CharacterConvert text(u"Gr\u00F6\u00DFe \U0001F3B9 \u3042", true);
    EXPECT_EQ(text.getStdString(), "Gr\xC3\xB6\xC3\x9F"
                                   "e \xF0\x9F\x8E\xB9 \xE3\x81\x82");
    const char16 lone[] = {u'a', 0xD800, u'b', 0xDC00, 0};
    EXPECT_EQ(CharacterConvert(lone, true).getStdString(), "a?b?");
}

TEST(CharacterConvert, GetStdStringGivesPackedBytesUpToAZeroByteOrTheFieldsEnd)
{
    EXPECT_EQ(packedText({"Nuendo\0\0", 8}), "Nuendo");
    EXPECT_EQ(packedText({"Cubase5\0\0\0", 10}), "Cubase5");
    EXPECT_EQ(packedText({"\xC4\xD6\xFF\0", 4}), "\xC4\xD6\xFF");
    EXPECT_EQ(packedText({"Cubase5\0", 8}), "Cubase5"); // no 16-bit unit is zero
    EXPECT_EQ(packedText({"Nuendo\0z", 8}), "Nuendo");  // something else behind the terminator
    EXPECT_EQ(packedText({"\0z", 2}), "");
    EXPECT_EQ(packedText("Nuen", 2), "Nuen");
    EXPECT_EQ(packedText("Nuendo", 2), "Nuen");
    // UTF-16 that is taken for packed text ends after its first character.
    EXPECT_EQ(CharacterConvert(u"Nuendo", false).getStdString(), "N");
}

TEST(CharacterConvert, ConvertHostTextGivesTheSameAsAnObject)
{
    EXPECT_EQ(CharacterConvert::ConvertHostText(u"Gr\u00F6\u00DFe \U0001F3B9", true),
              "Gr\xC3\xB6\xC3\x9F"
              "e \xF0\x9F\x8E\xB9");
    const char16 lone[] = {u'a', 0xD800, u'b', 0};
    EXPECT_EQ(CharacterConvert::ConvertHostText(lone, true), "a?b");
    const auto field = unterminated(u"selected");
    EXPECT_EQ(CharacterConvert::ConvertHostText(field.get(), true, 8), "selected");
    EXPECT_EQ(CharacterConvert::ConvertHostText(field.get(), true, 0), "");
    const char16 early[8] = u"two\0old";
    EXPECT_EQ(CharacterConvert::ConvertHostText(early, true, 8), "two");
    const auto odd = pack({"Cubase5\0", 8});
    EXPECT_EQ(CharacterConvert::ConvertHostText(odd.get(), false), "Cubase5");
    const auto ended = pack({"Nuendo\0z", 8});
    EXPECT_EQ(CharacterConvert::ConvertHostText(ended.get(), false, 4), "Nuendo");
    EXPECT_EQ(CharacterConvert::ConvertHostText(pack("Nuendo").get(), false, 2), "Nuen");
    EXPECT_EQ(CharacterConvert::ConvertHostText(pack("\xC4\xD6\xFF").get(), false, 1), "\xC4\xD6");
    for (const bool isUnicode : {false, true})
        EXPECT_EQ(CharacterConvert::ConvertHostText(nullptr, isUnicode, 8), "");
}

TEST(CharacterConvert, StringOfA16BitTextIsWideWithAndWithoutUnicode)
{
    const CharacterConvert wide(u"Nuendo", true);
    EXPECT_TRUE(static_cast<const String&>(wide).isWideString());
    EXPECT_EQ(static_cast<const String&>(wide).length(), 6);
    const auto units = pack({"Nuendo\0\0", 8});
    const CharacterConvert packed(units.get(), false);
    EXPECT_TRUE(static_cast<const String&>(packed).isWideString());
    EXPECT_EQ(static_cast<const String&>(packed).length(), 3);
}

TEST(CharacterConvert, GetStdStringReadsAFieldToItsTerminatorOrItsEnd)
{
    const auto field = unterminated(u"selected");
    EXPECT_EQ(CharacterConvert(field.get(), true, 8).getStdString(), "selected");
    EXPECT_EQ(CharacterConvert(field.get(), true, 3).getStdString(), "sel");
    EXPECT_EQ(CharacterConvert(field.get(), true, 0).getStdString(), "");
    EXPECT_EQ(CharacterConvert(field.get(), true, 8, false).getStdString(), "selected");
    const char16 early[8] = {u'o', u'u', u't', 0, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF};
    EXPECT_EQ(CharacterConvert(early, true, 8).getStdString(), "out");
    EXPECT_EQ(CharacterConvert(early, true, 8, false).getStdString(), "out");
}

TEST(CharacterConvert, ConstructorTakesANullTextForAnEmptyOne)
{
    for (const bool isUnicode : {false, true}) {
        const CharacterConvert wide(static_cast<const char16*>(nullptr), isUnicode);
        EXPECT_EQ(wide.getStdString(), "");
        EXPECT_EQ(wide.getStrToL(10), 0);
        const CharacterConvert narrow(static_cast<const char8*>(nullptr), isUnicode, 12);
        EXPECT_EQ(narrow.getStdString(), "");
        ASSERT_NE(narrow.text8(), nullptr);
        ASSERT_NE(narrow.text16(), nullptr);
    }
}

TEST(CharacterConvert, Text8AndText16AreEmptyAndNotNullForTheOtherKind)
{
    CharacterConvert unicode(u"Nuendo", true);
    ASSERT_NE(unicode.text8(), nullptr);
    EXPECT_STREQ(unicode.text8(), "");
    EXPECT_EQ(std::u16string(unicode.text16()), u"Nuendo");

    const CharacterConvert narrow("Nuendo", false);
    ASSERT_NE(narrow.text16(), nullptr);
    EXPECT_EQ(narrow.text16()[0], 0);
    EXPECT_STREQ(narrow.text8(), "Nuendo");
    // The base class says the same.
    EXPECT_STREQ(unicode.getText8(), "");
    EXPECT_EQ(std::u16string(unicode.getText16()), u"Nuendo");
}

TEST(CharacterConvert, GetStdStringGivesEightBitTextUnchangedUpToTheLengthWithoutUnicode)
{
    EXPECT_EQ(CharacterConvert("\xC4ther", false).getStdString(), "\xC4ther");
    EXPECT_EQ(CharacterConvert("Nuendo", false, 3).getStdString(), "Nue");
    EXPECT_EQ(CharacterConvert("Nuendo", false, 3, false).getStdString(), "Nue");
    EXPECT_EQ(CharacterConvert("Nu", false, 30).getStdString(), "Nu");
    const std::vector<char> field{'p', 'o', 'r', 't'};
    EXPECT_EQ(CharacterConvert(field.data(), false, 4).getStdString(), "port");
}

TEST(CharacterConvert, Text16OfAUnicodeHostsEightBitTextIsItsUtf16)
{
    const CharacterConvert text("\xC3\xB6 \xFFz", true);
    EXPECT_EQ(std::u16string(text.text16()), u"\u00F6 ?z");
    EXPECT_STREQ(text.text8(), "");
    EXPECT_EQ(text.getStdString(), "\xC3\xB6 ?z");
}

TEST(CharacterConvert, GetStdStringReadsAStringObject)
{
    StringObject wide;
    wide.setText16(u"port \u00F6");
    EXPECT_EQ(CharacterConvert(wide, true).getStdString(), "port \xC3\xB6");
    EXPECT_EQ(CharacterConvert(wide, true, 4).getStdString(), "port");

    StringObject narrow;
    narrow.setText8("port 7");
    EXPECT_EQ(CharacterConvert(narrow, true).getStdString(), "port 7");
    EXPECT_EQ(CharacterConvert(narrow, false).getStdString(), "port 7");
    EXPECT_EQ(CharacterConvert(narrow, false, 4).getStdString(), "port");
    EXPECT_STREQ(narrow.text8(), "port 7");
    const StringObject untouched; // nobody has set a text
    EXPECT_EQ(CharacterConvert(untouched, true).getStdString(), "");
    EXPECT_EQ(CharacterConvert(untouched, false).getStdString(), "");
    StringObject cleared;
    cleared.setText16(nullptr);
    EXPECT_EQ(CharacterConvert(cleared, true).getStdString(), "");
    // Without Unicode the 16-bit text is packed bytes.
    StringObject object;
    object.setText16(pack({"midi 1\0\0", 8}).get());
    EXPECT_EQ(CharacterConvert(object, false).getStdString(), "midi 1");
}

TEST(CharacterConvert, SetText8IsReadAsTheConstructorsCharacterSetSays)
{
    CharacterConvert text(u"first", true);
    text.setText8("second");
    EXPECT_EQ(text.getStdString(), "second");
    EXPECT_STREQ(text.text8(), "");
}

TEST(CharacterConvert, ConvertTo8BitStringGivesUtf8OnlyWhenAskedAndHasNoLimit)
{
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(nullptr, true), "");
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(nullptr, false), "");
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(u"", true), "");
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(u"", false), "");
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(u"a\u3042b", true), "a\xE3\x81\x82"
                                                                        "b");
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(u"a\u3042b", false), "a?b");
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(u"a\U0001F3B9b", false), "a?b");
    const std::u16string text(100000, u'\u3042');
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(text.c_str(), true).size(), 300000u);
    EXPECT_EQ(CharacterConvert::ConvertTo8BitString(text.c_str(), false), std::string(100000, '?'));
}

TEST(CharacterConvert, GetStrToLReadsTheDigitsOfTheBaseAndKeepsTheLow32Bits)
{
    EXPECT_EQ(number(u"10.5.2"), 10);
    EXPECT_EQ(number(u""), 0);
    EXPECT_EQ(number(u"Build"), 0);
    EXPECT_EQ(number(u" \t\n42x"), 42);
    EXPECT_EQ(number(u"-7"), -7);
    EXPECT_EQ(number(u"+7"), 7);
    EXPECT_EQ(number(u"\u0663"), 0); // a digit of another script
    EXPECT_EQ(number(u"ff", 16), 255);
    EXPECT_EQ(number(u"0x1F", 0), 31);
    EXPECT_EQ(number(u"189", 8), 1);
    EXPECT_EQ(number(u"12", 1), 0); // no such base
    EXPECT_EQ(number(u"2147483647"), 2147483647);
    EXPECT_EQ(number(u"4294967297"), 1);
    EXPECT_EQ(number(u"99999999999999999999999"), -1); // the largest long: all low 32 bits are set
    EXPECT_EQ(number(u"-99999999999999999999999"), 0); // the smallest long: none of them is set
}

TEST(CharacterConvert, IsContainedInStringIgnoresTheCaseOfAToZOnlyWhenAsked)
{
    const CharacterConvert text(u"Cubase LE", true);
    EXPECT_TRUE(text.IsContainedInString("cubase", true));
    EXPECT_FALSE(text.IsContainedInString("cubase", false));
    EXPECT_TRUE(text.IsContainedInString("Cubase LE", false));
    EXPECT_TRUE(text.IsContainedInString("base", false));
    EXPECT_FALSE(text.IsContainedInString("Cubase LE 5", true));
    // An empty text is in each, null in none.
    for (const bool ignoreCase : {false, true}) {
        EXPECT_TRUE(CharacterConvert(u"", true).IsContainedInString("", ignoreCase));
        EXPECT_TRUE(CharacterConvert("Nuendo", false).IsContainedInString("", ignoreCase));
        EXPECT_FALSE(CharacterConvert(u"Nuendo", true).IsContainedInString(nullptr, ignoreCase));
    }
    const CharacterConvert umlaut(u"\u00D6", true);
    EXPECT_FALSE(umlaut.IsContainedInString("\xC3\xB6", true));
    EXPECT_TRUE(umlaut.IsContainedInString("\xC3\x96", true));
}

TEST(CharacterConvert, GetLowerCaseStringChangesAToZOnly)
{
    std::string all;
    std::string lowered;
    for (int byte = 1; byte < 256; ++byte) {
        all.push_back(static_cast<char>(byte));
        lowered.push_back(static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + 32 : byte));
    }
    EXPECT_EQ(CharacterConvert::GetLowerCaseString(all.c_str()), lowered);
    EXPECT_EQ(CharacterConvert::GetLowerCaseString(""), "");
    EXPECT_EQ(CharacterConvert::GetLowerCaseString(nullptr), "");
}

TEST(CharacterConvert, ConstructorGivesOneReference)
{
    CharacterConvert text(u"Nuendo", true);
    EXPECT_EQ(text.getRefCount(), 1);
    static_assert(std::is_base_of_v<StringObject, CharacterConvert>);
}
