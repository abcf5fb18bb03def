#include "presets/PresetMetaInfo.h"

#include "basics/PlugInInfo.h"
#include "presets/VstK2xPresetCreater.h"

namespace Steinberg {
namespace Vst {
namespace {

constexpr char kPlaceholder[] = "REPLACE_CHARACTER";

std::string processorIDText()
{
    char8 text[33] = {};
    kProcessorUID.toString(text);
    return text;
}

} // namespace

std::string presetMetaInfo(const std::string& category, const std::string& subCategory,
                           const std::string& character)
{
    struct Line {
        const char* text;
        std::string value;
    };
    // clang-format off
    const Line lines[] = {
        {"<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n", ""},
        {"<MetaInfo>\n", ""},
        {"\t<Attribute id=\"FileType\" value=\"VST3 Preset\" type=\"string\" flags=\"writeProtected\"/>\n", ""},
        {"\t<Attribute id=\"MediaRating\" value=\"3\" type=\"int\" flags=\"\"/>\n", ""},
        {"\t<Attribute id=\"MediaType\" value=\"VstPreset\" type=\"string\" flags=\"writeProtected\"/>\n", ""},
        {"\t<Attribute id=\"PlugInCategory\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", kPlugInSubCategories},
        {"\t<Attribute id=\"PlugInName\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", kPlugInName},
        {"\t<Attribute id=\"MusicalInstrument\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", category + "|" + subCategory},
        {"\t<Attribute id=\"MusicalCharacter\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", character},
        {"\t<Attribute id=\"PlugInVendor\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", kPlugInVendor},
        {"\t<Attribute id=\"MusicalCategory\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", category},
        {"\t<Attribute id=\"MusicalMidiInstrument\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", kPlugInName},
        {"\t<Attribute id=\"VST3UniqueID\" value=\"REPLACE_CHARACTER\" type=\"string\" flags=\"writeProtected\"/>\n", processorIDText()},
        {"</MetaInfo>", ""},
    };
    // clang-format on
    std::string xml;
    for (const auto& [text, value] : lines) {
        std::string line = text;
        VstK2xPresetCreater::replaceString(line, kPlaceholder, value);
        xml += line;
    }
    return xml;
}

} // namespace Vst
} // namespace Steinberg
