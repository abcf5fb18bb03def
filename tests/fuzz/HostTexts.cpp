// The host's name, version and other texts, as a host with Unicode hands them out and as one
// without does. An input is
//   options, base, needle, name, version, three numbers to compare with
#include "hostapi/IHostApplicationW.h"
#include "support/CharacterConvert.h"
#include "support/DAWInfo.h"
#include "tests/doubles/StackObject.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LimitedMemory.h"
#include "tests/fuzz/TextModel.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

enum Options : uint8_t {
    kNoUnicode = 1,
    kNoName = 2,
    kNoVersion = 4,
    kNoHost = 8,
    kUsedBuffers = 16, ///< behind a text's terminator stands the rest of a former text
};

std::u16string upToZero(const std::u16string& text)
{
    return text.substr(0, text.find(u'\0'));
}

/** The bytes of all its units. */
std::string allBytesOf(const std::u16string& text)
{
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16)};
}

/** The text's own bytes, which are 8-bit text in a host without Unicode. */
std::string bytesOf(const std::u16string& text)
{
    const std::string bytes = allBytesOf(text);
    return bytes.substr(0, bytes.find('\0'));
}

/** A text as the host hands it out. Its memory ends with two zero bytes, or with one for 8-bit
    text: the text's own terminator, or in a used buffer the one of a former text. */
class HostBuffer {
public:
    HostBuffer(const std::u16string& text, uint8_t options)
    {
        const bool unicode = (options & kNoUnicode) == 0;
        std::string bytes = allBytesOf(text);
        if ((options & kUsedBuffers) == 0)
            bytes = unicode ? allBytesOf(upToZero(text)) : bytesOf(text);
        bytes.append(unicode ? sizeof(char16) : 1, '\0');
        memory.reset(std::malloc(bytes.size()));
        std::memcpy(memory.get(), bytes.data(), bytes.size());
    }
    const char16* get() const { return static_cast<const char16*>(memory.get()); }

private:
    struct Free {
        void operator()(void* freed) const { std::free(freed); }
    };
    std::unique_ptr<void, Free> memory;
};

void checkReading(const CharacterConvert& text, const std::string& expected,
                  const std::string& needle, int base)
{
    FUZZ_CHECK(text.text8() && text.text16());
    FUZZ_CHECK(text.getStdString() == expected);
    FUZZ_CHECK(text.getStrToL(base) ==
               static_cast<int32>(std::strtol(expected.c_str(), nullptr, base)));
    const auto sought = needle.substr(0, needle.find('\0'));
    FUZZ_CHECK(text.IsContainedInString(needle.c_str(), false) ==
               (expected.find(sought) != std::string::npos));
    FUZZ_CHECK(text.IsContainedInString(needle.c_str(), true) ==
               (fuzz::lowerCaseOf(expected).find(fuzz::lowerCaseOf(sought)) != std::string::npos));
    FUZZ_CHECK(text.IsContainedInString("", false) && !text.IsContainedInString(nullptr, true));
    FUZZ_CHECK(CharacterConvert::GetLowerCaseString(expected.c_str()) ==
               fuzz::lowerCaseOf(expected));
}

void checkSixteenBitText(const std::u16string& text, uint8_t options, const std::string& needle,
                         int base)
{
    const bool unicode = (options & kNoUnicode) == 0;
    const HostBuffer buffer(text, options);
    const CharacterConvert converted(buffer.get(), unicode, -1, true);
    if (unicode) {
        FUZZ_CHECK(converted.text16() == upToZero(text));
        FUZZ_CHECK(*converted.text8() == 0);
    } else {
        FUZZ_CHECK(converted.text8() == bytesOf(text));
        FUZZ_CHECK(*converted.text16() == 0);
    }
    checkReading(converted, unicode ? fuzz::utf8Of(text) : bytesOf(text), needle, base);
}

/** A text without a terminator, in memory that ends with its last unit. */
void checkUnterminatedText(const std::u16string& text, bool unicode)
{
    const auto exact = std::make_unique<char16[]>(text.size());
    std::copy(text.begin(), text.end(), exact.get());
    const CharacterConvert converted(exact.get(), unicode, static_cast<int32>(text.size()), false);
    FUZZ_CHECK(converted.getStdString() == (unicode ? fuzz::utf8Of(text) : bytesOf(text)));
}

void checkEightBitText(const std::string& text, const std::string& needle, int base)
{
    const auto visible = text.substr(0, text.find('\0'));
    const CharacterConvert plain(text.c_str(), false, -1, true);
    FUZZ_CHECK(plain.text8() == visible && *plain.text16() == 0);
    checkReading(plain, visible, needle, base);

    // The same bytes taken for Unicode: converted first.
    const CharacterConvert wide(text.c_str(), true, -1, true);
    const auto units = fuzz::utf16Of(visible);
    FUZZ_CHECK(*wide.text8() == 0 && wide.text16() == units);
    checkReading(wide, fuzz::utf8Of(units), needle, base);
    const StringObject object(text.c_str());
    FUZZ_CHECK(CharacterConvert(object, true, -1).text16() == units);
    FUZZ_CHECK(CharacterConvert(object, false, -1).text8() == visible);
}

/** A host of which only the texts matter, on the stack. */
class TextHost : public doubles::StackObject<IHostApplicationW> {
public:
    TextHost(const std::u16string& name, const std::u16string& version, uint8_t hostOptions)
    : nameBuffer(name, hostOptions)
    , versionBuffer(version, hostOptions)
    , options(hostOptions)
    {
    }
    const char16* PLUGIN_API getApplicationName() override
    {
        return (options & kNoName) ? nullptr : nameBuffer.get();
    }
    const char16* PLUGIN_API getVersionString() override
    {
        return (options & kNoVersion) ? nullptr : versionBuffer.get();
    }
    tresult PLUGIN_API getCharacterSet() override
    {
        return (options & kNoUnicode) ? kResultFalse : kResultOk;
    }

private:
    HostBuffer nameBuffer;
    HostBuffer versionBuffer;
    uint8_t options;
};

int hostTypeOf(const std::string& name)
{
    const auto lower = fuzz::lowerCaseOf(name);
    const auto has = [&](const char* part) { return lower.find(part) != std::string::npos; };
    if (has("cubase studio") || has("cubase artist"))
        return 3;
    if (has("cubase essential") || has("cubase elements"))
        return 2;
    if (has("cubase ai"))
        return 1;
    if (has("cubase le"))
        return 0;
    if (has("cubase"))
        return 4;
    return has("nuendo") ? 5 : 6;
}

struct Version {
    int64 fields[3] = {-1, -1, -1};
};

int64 fieldOf(const std::u16string& field)
{
    return static_cast<int32>(std::strtol(fuzz::utf8Of(field).c_str(), nullptr, 10));
}

Version versionOf(const std::u16string& text)
{
    Version version;
    const auto first = text.find_first_of(u"0123456789");
    const auto dot = text.find(u'.', std::min(first, text.size()));
    if (first == std::u16string::npos || dot == std::u16string::npos)
        return version;
    version.fields[0] = fieldOf(text.substr(first, dot - first));
    const auto second = text.find(u'.', dot + 1);
    if (second == std::u16string::npos)
        return version;
    if (second > dot + 1)
        version.fields[1] = fieldOf(text.substr(dot + 1, second - dot - 1));
    if (second + 1 < text.size())
        version.fields[2] = fieldOf(text.substr(second + 1));
    return version;
}

int compared(const Version& version, const int32 (&given)[3])
{
    for (int i = 0; i < 3; ++i)
        if (given[i] >= 0 && version.fields[i] != given[i])
            return version.fields[i] > given[i] ? 1 : -1;
    return 0;
}

void checkHost(const std::u16string& name, const std::u16string& version, uint8_t options,
               const int32 (&given)[3])
{
    const bool unicode = (options & kNoUnicode) == 0;
    const bool noHost = (options & kNoHost) != 0;
    TextHost host(name, version, options);
    const DAWInfo info(noHost ? nullptr : &host);
    FUZZ_CHECK(host.getReferences() == 1);

    const bool hasName = !noHost && (options & kNoName) == 0;
    FUZZ_CHECK(info.getHostType() ==
               (hasName ? hostTypeOf(unicode ? fuzz::utf8Of(name) : bytesOf(name)) : 6));
    // No digit of a packed text has a dot behind it: two characters share each unit.
    const bool hasVersion = !noHost && unicode && (options & kNoVersion) == 0;
    const auto expected = hasVersion ? versionOf(upToZero(version)) : Version();
    FUZZ_CHECK(info.getMajorVersion() == expected.fields[0]);
    FUZZ_CHECK(info.getMinorVersion() == expected.fields[1]);
    FUZZ_CHECK(info.getSubVersion() == expected.fields[2]);
    FUZZ_CHECK(info.CompareVersion(given[0], given[1], given[2]) == compared(expected, given));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    const uint8_t options = input.byte();
    const int base = input.byte() % 40;
    int32 given[3];
    for (int32& number : given)
        number = input.number<int16_t>();
    const auto needle = input.bytes(40);
    const auto name = input.units(100);
    const auto version = input.units(100);

    const bool unicode = (options & kNoUnicode) == 0;
    for (const auto& text : {name, version}) {
        checkSixteenBitText(text, options, needle, base);
        checkUnterminatedText(text, unicode);
        const HostBuffer buffer(text, options & kUsedBuffers);
        FUZZ_CHECK(CharacterConvert::ConvertTo8BitString(buffer.get(), true) == fuzz::utf8Of(text));
        FUZZ_CHECK(CharacterConvert::ConvertTo8BitString(buffer.get(), false) ==
                   fuzz::asciiOf(text));
    }
    checkEightBitText(needle, needle, base);
    checkHost(name, version, options, given);
    return 0;
}
