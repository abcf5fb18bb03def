// The fake Core Foundation's strings, after Apple's reference of CFString. One thing is simpler:
// when the buffer is too small CFStringGetBytes writes nothing, and on a Mac what fits. Neither the
// SDK nor the plug-in relies on it.
#include "tests/macos/fakes/FakeCoreFoundation.h"
#include "tests/macos/fakes/FakeObject.h"

#include "tests/macos/fakes/FakeEncodings.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <vector>

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFAllocatorRef kCFAllocatorNull = nullptr;

/** What clang makes of CFSTR for a Mac. isa is the address of the class below. */
struct ConstantString {
    const void* isa;
    uint64_t flags;
    const void* text;
    CFIndex length; ///< in bytes or in UTF-16 units, by the flags
};

extern "C" const char __CFConstantStringClassReference[] = "the class of constant strings";

namespace doubles {

namespace {

/** Of clang's CodeGenModule::GetAddrOfConstantCFString: 0x07C8 for bytes, 0x07D0 for UTF-16. */
constexpr uint64_t kIsWide = 0x10;

CFMutableStringRef makeString(std::u16string text)
{
    auto* string = new __CFString;
    string->text = std::move(text);
    return string;
}

std::u16string textOf(CFStringRef string)
{
    if (!isConstantString(string))
        return string->text;
    const auto* constant = reinterpret_cast<const ConstantString*>(string);
    const auto length = static_cast<size_t>(constant->length);
    if (constant->flags & kIsWide)
        return {static_cast<const char16_t*>(constant->text), length};
    const auto* bytes = static_cast<const char*>(constant->text);
    return {bytes, bytes + length};
}

} // namespace

bool isConstantString(CFTypeRef object)
{
    const auto* bytes = static_cast<const char*>(object);
    return bytes >= FakeCoreFoundation::constantsBegin &&
           bytes < FakeCoreFoundation::constantsEnd &&
           static_cast<const ConstantString*>(object)->isa == __CFConstantStringClassReference;
}

std::u16string utf16From(const std::string& utf8)
{
    const auto text = decoded(utf8, kCFStringEncodingUTF8);
    if (!text)
        throw std::range_error("no UTF-8");
    return *text;
}

std::string utf8From(const std::u16string& text)
{
    const auto bytes = encoded(text, kCFStringEncodingUTF8, 0);
    if (!bytes || utf16From(*bytes) != text)
        throw std::range_error("no UTF-16");
    return *bytes;
}

} // namespace doubles

using namespace doubles;

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding)
{
    const auto units = decoded(text, encoding);
    return units ? makeString(*units) : nullptr;
}

CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef, const UniChar* units, CFIndex length,
                                               CFAllocatorRef)
{
    return makeString(std::u16string(units, units + length));
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex size,
                                    CFStringEncoding encoding, Boolean)
{
    const std::string text(reinterpret_cast<const char*>(bytes), static_cast<size_t>(size));
    const auto units = decoded(text, encoding);
    return units ? makeString(*units) : nullptr;
}

CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex)
{
    return makeString({});
}

void CFStringAppendCharacters(CFMutableStringRef string, const UniChar* units, CFIndex length)
{
    string->text.append(units, units + length);
}

void CFStringAppendCString(CFMutableStringRef string, const char* text, CFStringEncoding encoding)
{
    string->text += decoded(text, encoding).value_or(u"");
}

/** Knows the SDK's formats "%.*lf" and "%lld", which mean the same to the C library (Apple's String
    Format Specifiers). */
CFStringRef CFStringCreateWithFormatAndArguments(CFAllocatorRef, CFDictionaryRef,
                                                 CFStringRef format, va_list arguments)
{
    const auto known = utf8From(textOf(format));
    if (known != "%.*lf" && known != "%lld")
        std::abort();
    std::vector<char> text(512);
    std::vsnprintf(text.data(), text.size(), known.c_str(), arguments);
    return makeString(utf16From(text.data()));
}

CFStringRef CFStringCreateWithFormat(CFAllocatorRef allocator, CFDictionaryRef options,
                                     CFStringRef format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    auto* string = CFStringCreateWithFormatAndArguments(allocator, options, format, arguments);
    va_end(arguments);
    return string;
}

CFIndex CFStringGetLength(CFStringRef string)
{
    return static_cast<CFIndex>(textOf(string).size());
}

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer)
{
    const auto text = textOf(string);
    std::copy_n(text.begin() + range.location, range.length, buffer);
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean, UInt8* buffer, CFIndex size, CFIndex* usedSize)
{
    CFIndex unwanted = 0;
    CFIndex& used = usedSize ? *usedSize : unwanted;
    used = 0;
    if (FakeCoreFoundation::failConversions)
        return 0;
    const auto part = textOf(string).substr(static_cast<size_t>(range.location),
                                            static_cast<size_t>(range.length));
    const auto bytes = encoded(part, encoding, lossByte);
    if (!bytes || bytes->size() > static_cast<size_t>(size))
        return 0;
    std::memcpy(buffer, bytes->data(), bytes->size());
    used = static_cast<CFIndex>(bytes->size());
    return range.length;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding)
{
    const auto bytes = encoded(textOf(string), encoding, 0);
    if (!bytes || bytes->size() >= static_cast<size_t>(size))
        return false;
    std::memcpy(buffer, bytes->c_str(), bytes->size() + 1);
    return true;
}

/** The sizes of Core Foundation's published CFString.c, for the encodings in use. */
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding)
{
    if (encoding == kCFStringEncodingUTF16)
        return 2 * length;
    return encoding == kCFStringEncodingUTF8 ? 3 * length : length;
}

double CFStringGetDoubleValue(CFStringRef string)
{
    return std::strtod(utf8From(textOf(string)).c_str(), nullptr);
}

// The SDK's text class needs these to link; no test calls them.

CFComparisonResult CFStringCompare(CFStringRef, CFStringRef, CFStringCompareFlags)
{
    std::abort();
}

CFComparisonResult CFStringCompareWithOptions(CFStringRef, CFStringRef, CFRange,
                                              CFStringCompareFlags)
{
    std::abort();
}
