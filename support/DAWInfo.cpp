#include "support/DAWInfo.h"

#include "hostapi/IHostApplicationW.h"
#include "support/CharacterConvert.h"

#include <cstring>
#include <string>

namespace Steinberg {
namespace Vst {

namespace {

/** The editions come before "Cubase", which is part of each of their names. */
constexpr struct {
    const char* name;
    int32 hostType;
} kProducts[] = {
    {"Cubase Studio", DAWInfo::kCubaseStudio},
    {"Cubase Artist", DAWInfo::kCubaseStudio},
    {"Cubase Essential", DAWInfo::kCubaseEssential},
    {"Cubase Elements", DAWInfo::kCubaseEssential},
    {"Cubase AI", DAWInfo::kCubaseAI},
    {"Cubase LE", DAWInfo::kCubaseLE},
    {"Cubase", DAWInfo::kCubase},
    {"Nuendo", DAWInfo::kNuendo},
};

int32 hostTypeOf(const CharacterConvert& name)
{
    for (const auto& product : kProducts)
        if (name.IsContainedInString(product.name, true))
            return product.hostType;
    return DAWInfo::kUnknownHost;
}

bool isUnicode(IHostApplicationW& host)
{
    return host.getCharacterSet() == kResultOk;
}

/** The texts come as char16 and are declared as uint16. The two are different types of the same
    size, so reading one as the other is only allowed through a copy of the bytes. */
char16 unitAt(const uint16* text, int index)
{
    char16 unit = 0;
    std::memcpy(&unit, text + index, sizeof(unit));
    return unit;
}

std::u16string copyOf(const uint16* text, int index)
{
    std::u16string copy;
    for (char16 unit = unitAt(text, index); unit != 0; unit = unitAt(text, ++index))
        copy.push_back(unit);
    return copy;
}

/** Moves the text before the first dot from rest to field, and removes the dot.
    @return false when there is no dot */
bool takeField(std::u16string& rest, std::u16string& field)
{
    const auto dot = rest.find(u'.');
    if (dot == std::u16string::npos)
        return false;
    field = rest.substr(0, dot);
    rest.erase(0, dot + 1);
    return true;
}

void store(const std::u16string& field, bool unicode, int32& version)
{
    if (!field.empty())
        version = CharacterConvert(field.c_str(), unicode).getStrToL(10);
}

int compare(int32 stored, int given)
{
    return stored > given ? 1 : stored < given ? -1 : 0;
}

} // namespace

DAWInfo::DAWInfo(IHostApplicationW* application)
: host(application)
{
    if (application)
        AnalyzeDAWInfo(application);
}

bool DAWInfo::AnalyzeDAWInfo(IHostApplicationW* application)
{
    if (!application)
        return false;
    const char16* name = application->getApplicationName();
    const char16* version = application->getVersionString();
    const bool unicode = isUnicode(*application);
    if (name)
        hostType = hostTypeOf(CharacterConvert(name, unicode));
    // A host without Unicode packs two characters into each unit, so no unit is a digit or a dot.
    // Its text also ends with one zero byte: reading up to a zero unit would run past the end.
    if (version && unicode)
        SetVersionInfoFromString(reinterpret_cast<const uint16*>(version));
    return true;
}

void DAWInfo::SetVersionInfoFromString(const uint16* text)
{
    const int first = GetNumberStringIndex(text);
    if (first < 0)
        return;
    std::u16string rest = copyOf(text, first);
    std::u16string major;
    std::u16string minor;
    std::u16string sub;
    if (!takeField(rest, major))
        return;
    if (takeField(rest, minor))
        sub = rest;
    if (!host)
        return;
    const bool unicode = isUnicode(*host);
    store(major, unicode, majorVersion);
    store(minor, unicode, minorVersion);
    store(sub, unicode, subVersion);
}

int DAWInfo::GetNumberStringIndex(const uint16* text) const
{
    if (!text)
        return -1;
    int index = 0;
    for (char16 unit = unitAt(text, index); unit != 0; unit = unitAt(text, ++index))
        if (unit >= u'0' && unit <= u'9')
            return index;
    return -1;
}

int DAWInfo::CompareVersion(int major, int minor, int sub) const
{
    const int32 stored[] = {majorVersion, minorVersion, subVersion};
    const int given[] = {major, minor, sub};
    for (int i = 0; i < 3; ++i)
        if (given[i] >= 0 && stored[i] != given[i])
            return compare(stored[i], given[i]);
    return 0;
}

} // namespace Vst
} // namespace Steinberg
