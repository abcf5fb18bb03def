// The attributes of a preset file as the media browser reads them: what the plug-in writes is
// compared with them.
#pragma once

#include <string>

namespace doubles {

/** The whole text; the three values stand in it as they are given. */
inline std::string presetXml(const std::string& category, const std::string& subCategory,
                             const std::string& character)
{
    return "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n"
           "<MetaInfo>\n"
           "\t<Attribute id=\"FileType\" value=\"VST3 Preset\" type=\"string\" "
           "flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"MediaRating\" value=\"3\" type=\"int\" flags=\"\"/>\n"
           "\t<Attribute id=\"MediaType\" value=\"VstPreset\" type=\"string\" "
           "flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"PlugInCategory\" value=\"Instrument|External|OnlyRT|DSPBased\" "
           "type=\"string\" flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"PlugInName\" value=\"RDL3/RDL5 VST\" type=\"string\" "
           "flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"MusicalInstrument\" value=\"" +
           category + "|" + subCategory +
           "\" type=\"string\" flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"MusicalCharacter\" value=\"" +
           character +
           "\" type=\"string\" flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"PlugInVendor\" value=\"Tavrin Corporation\" type=\"string\" "
           "flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"MusicalCategory\" value=\"" +
           category +
           "\" type=\"string\" flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"MusicalMidiInstrument\" value=\"RDL3/RDL5 VST\" type=\"string\" "
           "flags=\"writeProtected\"/>\n"
           "\t<Attribute id=\"VST3UniqueID\" value=\"13EEE3484D664261B90352CE35DD18B4\" "
           "type=\"string\" flags=\"writeProtected\"/>\n"
           "</MetaInfo>";
}

} // namespace doubles
