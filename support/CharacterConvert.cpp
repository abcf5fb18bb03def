#include "support/CharacterConvert.h"

#include "basics/Utf.h"
#include "platform/SystemText.h"

#include <cstdlib>

namespace Steinberg {
namespace Vst {

namespace {

std::u16string_view wideText(const char16* text, int32 limit)
{
    if (limit < 0)
        return text;
    return {text, boundedLength(text, static_cast<size_t>(limit))};
}

/** 8-bit text in a field of limit units. */
std::string_view packedText(const char16* field, int32 limit)
{
    const auto* bytes = reinterpret_cast<const char8*>(field);
    if (limit < 0)
        return bytes;
    return {bytes, boundedLength(bytes, static_cast<size_t>(limit) * sizeof(char16))};
}

/** Length of packed 8-bit text in whole units, without its zero byte: the copy appends a zero unit
    anyway. So a text that ends with a single zero byte is not read past its end. */
int32 packedLength(const char16* field, int32 limit)
{
    return static_cast<int32>((packedText(field, limit).size() + 1) / sizeof(char16));
}

/** Units to copy; -1 when there is no limit and String itself can look for the terminator. */
int32 unitsOf(const char16* text, bool isUnicode, int32 limit, bool isTerminated)
{
    if (!text || !isTerminated)
        return limit;
    if (!isUnicode)
        return packedLength(text, limit);
    return limit < 0 ? -1 : static_cast<int32>(wideText(text, limit).size());
}

int32 bytesOf(const char8* text, int32 limit, bool isTerminated)
{
    if (!text || !isTerminated || limit < 0)
        return limit;
    return static_cast<int32>(boundedLength(text, static_cast<size_t>(limit)));
}

} // namespace

// String must look for the terminator only where unitsOf has not done so.
CharacterConvert::CharacterConvert(const char16* text, bool isUnicode, int32 length,
                                   bool isTerminated)
: StringObject(text, unitsOf(text, isUnicode, length, isTerminated),
               isTerminated && isUnicode && length < 0)
, unicode(isUnicode)
{
}

CharacterConvert::CharacterConvert(const char8* text, bool isUnicode, int32 length,
                                   bool isTerminated)
: StringObject(text, bytesOf(text, length, isTerminated), isTerminated && length < 0)
, unicode(isUnicode)
{
}

CharacterConvert::CharacterConvert(const StringObject& other, bool isUnicode, int32 length)
: StringObject(other, length)
, unicode(isUnicode)
{
}

const char8* CharacterConvert::text8() const
{
    return unicode || !buffer8 ? kEmptyString8 : buffer8;
}

const char16* CharacterConvert::text16() const
{
    if (!unicode)
        return kEmptyString16;
    if (!isWide && !isEmpty()) {
        // The base class converts as well, but throws on malformed bytes (see Utf.h).
        const std::u16string wide = utf8ToUtf16({buffer8, boundedLength(buffer8, len)});
        const_cast<CharacterConvert*>(this)->assign(wide.data(), static_cast<int32>(wide.size()),
                                                    false);
    }
    return isWide && buffer16 ? buffer16 : kEmptyString16;
}

std::string CharacterConvert::getStdString() const
{
    return unicode ? ConvertTo8BitString(text16(), true) : std::string(text8());
}

std::string CharacterConvert::ConvertHostText(const char16* text, bool isUnicode, int32 length)
{
    if (!text)
        return {};
    return isUnicode ? utf16ToUtf8(wideText(text, length)) : std::string(packedText(text, length));
}

std::string CharacterConvert::ConvertTo8BitString(const char16* text, bool utf8)
{
    if (!text)
        return {};
    const std::u16string_view wide(text);
    return utf8 ? utf16ToUtf8(wide) : toSystemCodePage(wide.data(), wide.size());
}

int32 CharacterConvert::getStrToL(int base) const
{
    return static_cast<int32>(std::strtol(getStdString().c_str(), nullptr, base));
}

bool CharacterConvert::IsContainedInString(const char* needle, bool ignoreCase) const
{
    if (!needle)
        return false;
    const std::string haystack = getStdString();
    if (!ignoreCase)
        return haystack.find(needle) != std::string::npos;
    return GetLowerCaseString(haystack.c_str()).find(GetLowerCaseString(needle)) !=
           std::string::npos;
}

// Not tolower: in some locales, which the host chooses, it changes bytes of UTF-8 characters.
std::string CharacterConvert::GetLowerCaseString(const char* text)
{
    std::string result = text ? text : "";
    for (char& byte : result)
        if (byte >= 'A' && byte <= 'Z')
            byte = static_cast<char>(byte - 'A' + 'a');
    return result;
}

} // namespace Vst
} // namespace Steinberg
