#include "presets/PresetMetaInfo.h"

#include "basics/PlugInInfo.h"

namespace Steinberg {
namespace Vst {
namespace {

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
    struct Attribute {
        const char* id;
        std::string value;
        const char* end = "\" type=\"string\" flags=\"writeProtected\"/>\n";
    };
    // clang-format off
    const Attribute attributes[] = {
        {"FileType", "VST3 Preset"},
        {"MediaRating", "3", "\" type=\"int\" flags=\"\"/>\n"},
        {"MediaType", "VstPreset"},
        {"PlugInCategory", kPlugInSubCategories},
        {"PlugInName", kPlugInName},
        {"MusicalInstrument", category + "|" + subCategory},
        {"MusicalCharacter", character},
        {"PlugInVendor", kPlugInVendor},
        {"MusicalCategory", category},
        {"MusicalMidiInstrument", kPlugInName},
        {"VST3UniqueID", processorIDText()},
    }; // untaken: compiler
    // clang-format on
    std::string xml = "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n<MetaInfo>\n";
    for (const auto& [id, value, end] : attributes) {
        xml += "\t<Attribute id=\"";
        xml += id;
        xml += "\" value=\"";
        xml += value;
        xml += end;
    }
    xml += "</MetaInfo>";
    return xml;
} // untaken: compiler

} // namespace Vst
} // namespace Steinberg
