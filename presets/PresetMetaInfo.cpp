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

std::string attribute(const std::string& id, const std::string& value)
{
    std::string line = "\t<Attribute id=\"" + id + "\" value=\"" + kPlaceholder +
                       "\" type=\"string\" flags=\"writeProtected\"/>\n";
    VstK2xPresetCreater::replaceString(line, kPlaceholder, value);
    return line;
}

} // namespace

std::string presetMetaInfo(const std::string& category, const std::string& subCategory,
                           const std::string& character)
{
    return "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n<MetaInfo>\n" +
           attribute("FileType", "VST3 Preset") +
           "\t<Attribute id=\"MediaRating\" value=\"3\" type=\"int\" flags=\"\"/>\n" +
           attribute("MediaType", "VstPreset") + attribute("PlugInCategory", kPlugInSubCategories) +
           attribute("PlugInName", kPlugInName) +
           attribute("MusicalInstrument", category + "|" + subCategory) +
           attribute("MusicalCharacter", character) + attribute("PlugInVendor", kPlugInVendor) +
           attribute("MusicalCategory", category) +
           attribute("MusicalMidiInstrument", kPlugInName) +
           attribute("VST3UniqueID", processorIDText()) + "</MetaInfo>";
}

} // namespace Vst
} // namespace Steinberg
