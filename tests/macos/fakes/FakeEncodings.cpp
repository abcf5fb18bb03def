#include "tests/macos/fakes/FakeEncodings.h"

#include <CoreFoundation/CFStringEncodingExt.h>

#include <array>
#include <iconv.h>

namespace doubles {

namespace {

/** iconv's name; null for an unknown encoding. UTF-16 has no byte order mark. */
const char* nameOf(CFStringEncoding encoding)
{
    switch (encoding) {
    case kCFStringEncodingMacRoman:
        return "MACINTOSH";
    case kCFStringEncodingMacCentralEurRoman:
        return "MAC-CENTRALEUROPE";
    case kCFStringEncodingUTF16:
        return "UTF-16LE";
    case kCFStringEncodingWindowsLatin1:
        return "CP1252";
    case kCFStringEncodingASCII:
        return "ASCII";
    case kCFStringEncodingShiftJIS_X0213_00:
        return "SHIFT_JISX0213";
    case kCFStringEncodingUTF8:
        return "UTF-8";
    default:
        return nullptr;
    }
}

class Conversion {
public:
    Conversion(const char* to, const char* from)
    : handle(iconv_open(to, from))
    {
    }
    ~Conversion()
    {
        if (isOpen())
            iconv_close(handle);
    }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    // iconv_open returns this value when it has no such conversion.
    bool isOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }

    /** Nothing when a part cannot be converted. */
    std::optional<std::string> operator()(std::string bytes) const
    {
        std::string result;
        char* in = bytes.data();
        size_t left = bytes.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        while (left > 0) {
            std::array<char, 256> part{};
            char* out = part.data();
            size_t room = part.size();
            const size_t before = left;
            iconv(handle, &in, &left, &out, &room);
            result.append(part.data(), out);
            if (left == before)
                return std::nullopt;
        }
        return result;
    }

private:
    const iconv_t handle;
};

bool isSurrogatePair(const std::u16string& text, size_t index)
{
    return text[index] >= 0xD800 && text[index] < 0xDC00 && index + 1 < text.size() &&
           text[index + 1] >= 0xDC00 && text[index + 1] < 0xE000;
}

std::string bytesOf(const std::u16string& text)
{
    return {reinterpret_cast<const char*>(text.data()), 2 * text.size()};
}

} // namespace

std::optional<std::u16string> decoded(const std::string& bytes, CFStringEncoding encoding)
{
    const char* name = nameOf(encoding);
    if (!name)
        return std::nullopt;
    const auto units = Conversion("UTF-16LE", name)(bytes);
    if (!units)
        return std::nullopt;
    return std::u16string(reinterpret_cast<const char16_t*>(units->data()), units->size() / 2);
}

std::optional<std::string> encoded(const std::u16string& text, CFStringEncoding encoding,
                                   UInt8 lossByte)
{
    const char* name = nameOf(encoding);
    if (!name)
        return std::nullopt;
    const Conversion convert(name, "UTF-16LE");
    std::string result;
    for (size_t index = 0; index < text.size();) {
        const size_t units = isSurrogatePair(text, index) ? 2 : 1;
        const auto bytes = convert(bytesOf(text.substr(index, units)));
        if (!bytes && lossByte == 0)
            break;
        result += bytes ? *bytes : std::string(1, static_cast<char>(lossByte));
        index += units;
    }
    return result;
}

} // namespace doubles
