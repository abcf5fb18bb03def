// The fake Core Foundation's texts.
#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/fakes/FakeObject.h"

#include <algorithm>
#include <codecvt>
#include <cstdlib>
#include <cstring>
#include <locale>
#include <stdexcept>

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFAllocatorRef kCFAllocatorNull = nullptr;

namespace doubles {

namespace {

struct Facet : std::codecvt<char16_t, char, std::mbstate_t> {};
using Converter = std::wstring_convert<Facet, char16_t>;

CFStringRef makeString(std::u16string text)
{
    auto* string = new __CFString;
    string->text = std::move(text);
    return string;
}

constexpr char16_t kUmlautA = u'\u00E4';
constexpr UInt8 kMacRomanUmlautA = 0x8A;

/** One character's byte in Mac OS Roman, as far as tests need it; 0 when it has none. */
UInt8 macRoman(char16_t unit)
{
    if (unit < 0x80)
        return static_cast<UInt8>(unit);
    return unit == kUmlautA ? kMacRomanUmlautA : 0;
}

/** Mac OS Roman has a character for every byte; those that no test needs are all the same here. */
std::u16string fromMacRoman(const std::string& bytes)
{
    std::u16string text;
    for (const char byte : bytes) {
        const auto value = static_cast<UInt8>(byte);
        const char16_t other = value == kMacRomanUmlautA ? kUmlautA : u'\uFFFD';
        text += value < 0x80 ? value : other;
    }
    return text;
}

std::string encoded(const std::u16string& text, CFStringEncoding encoding, UInt8 lossByte)
{
    if (encoding == kCFStringEncodingUTF8)
        return utf8From(text);
    std::string bytes;
    for (const char16_t unit : text) {
        const UInt8 byte = macRoman(unit);
        bytes += static_cast<char>(byte ? byte : lossByte);
    }
    return bytes;
}

} // namespace

std::u16string utf16From(const std::string& utf8)
{
    return Converter().from_bytes(utf8);
}

std::string utf8From(const std::u16string& text)
{
    return Converter().to_bytes(text);
}

} // namespace doubles

using namespace doubles;

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding)
{
    try {
        const bool isUtf8 = encoding == kCFStringEncodingUTF8;
        return makeString(isUtf8 ? utf16From(text) : fromMacRoman(text));
    } catch (const std::range_error&) {
        return nullptr;
    }
}

CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef, const UniChar* units, CFIndex length,
                                               CFAllocatorRef)
{
    return makeString(std::u16string(units, units + length));
}

CFIndex CFStringGetLength(CFStringRef string)
{
    return static_cast<CFIndex>(string->text.size());
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer)
{
    std::copy_n(string->text.begin() + range.location, range.length, buffer);
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean, UInt8* buffer, CFIndex size, CFIndex* usedSize)
{
    *usedSize = 0;
    if (FakeCoreFoundation::failConversions)
        return 0;
    const auto part =
        string->text.substr(static_cast<size_t>(range.location), static_cast<size_t>(range.length));
    const auto bytes = encoded(part, encoding, lossByte);
    if (bytes.size() > static_cast<size_t>(size))
        return 0;
    std::memcpy(buffer, bytes.data(), bytes.size());
    *usedSize = static_cast<CFIndex>(bytes.size());
    return range.length;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding)
{
    return encoding == kCFStringEncodingUTF8 ? 3 * length : length;
}

// The SDK's text class also names these; no test leads to them.

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8*, CFIndex, CFStringEncoding,
                                    Boolean)
{
    std::abort();
}

CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex)
{
    std::abort();
}

void CFStringAppendCharacters(CFMutableStringRef, const UniChar*, CFIndex)
{
    std::abort();
}

void CFStringAppendCString(CFMutableStringRef, const char*, CFStringEncoding)
{
    std::abort();
}

Boolean CFStringGetCString(CFStringRef, char*, CFIndex, CFStringEncoding)
{
    std::abort();
}

CFComparisonResult CFStringCompare(CFStringRef, CFStringRef, CFStringCompareFlags)
{
    std::abort();
}

CFComparisonResult CFStringCompareWithOptions(CFStringRef, CFStringRef, CFRange,
                                              CFStringCompareFlags)
{
    std::abort();
}
