#include "presets/CubaseCategory.h"
#include "presets/CubaseSubCategoryTables.h"

namespace Steinberg {
namespace Vst {
namespace Cubase {
namespace Category {
namespace {

using namespace SubCategory;

constexpr CategorySubCategory End = {nullptr, nullptr, nullptr};

constexpr const char* searchWordsAccordion[] = {"Accordion", nullptr};
constexpr const char* searchWordsHarp[] = {"Harp", nullptr};
constexpr const char* searchWordsHarmonica[] = {"Harmonica", nullptr};

} // namespace

// clang-format off
// name, the records by sub-category, search words
constexpr CategorySubCategory PIANO[] = {
    {"Piano", Piano::Piano_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory KEYBOARD[] = {
    {"Keyboard", Keyboard::Keyboard_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory ORGAN[] = {
    {"Organ", Organ::Organ_SubCategoryArray, nullptr},
    {"Accordion", Organ::Organ_SubCategoryArray, searchWordsAccordion},
    End};
constexpr CategorySubCategory GUITARPLUCKED[] = {
    {"Guitar/Plucked", GuitarPlucked::GuitarPlucked_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory BASS[] = {
    {"Bass", Bass::Bass_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory STRINGS[] = {
    {"Strings", Strings::Strings_SubCategoryArray, nullptr},
    {"Guitar/Plucked", Strings::Strings_SubCategoryArray, searchWordsHarp},
    End};
constexpr CategorySubCategory BRASS[] = {
    {"Brass", Brass::Brass_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory WOODWINDS[] = {
    {"Woodwinds", Woodwinds::Woodwinds_SubCategoryArray, nullptr},
    {"Accordion", Woodwinds::Woodwinds_SubCategoryArray, searchWordsHarmonica},
    End};
constexpr CategorySubCategory SYNTHLEAD[] = {
    {"Synth Lead", SynthLead::SynthLead_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory SYNTHPAD[] = {
    {"Synth Pad", SynthPad::SynthPad_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory SYNTHCOMP[] = {
    {"Synth Comp", SynthComp::SynthComp_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory CHROMATICPERC[] = {
    {"Chromatic Perc", ChromaticPerc::ChromaticPerc_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory DRUMPERC[] = {
    {"Drum&amp;Perc", DrumPerc::DrumPerc_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory SOUNDFX[] = {
    {"Sound FX", SoundFX::SoundFX_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory MUSICALFX[] = {
    {"Musical FX", MusicalFX::MusicalFX_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory ETHNIC[] = {
    {"Ethnic", Ethnic::Ethnic_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory VOCODER[] = {
    {"Other", Vocoder::Vocoder_SubCategoryArray, nullptr},
    End};
constexpr CategorySubCategory OTHER[] = {
    {"Other", Other::Other_SubCategoryArray, nullptr},
    End};

constexpr const CategorySubCategory* categoryArray[kCategoryCount] = {
    PIANO,         // Acoustic Piano
    KEYBOARD,      // Keyboard
    ORGAN,         // Organ
    GUITARPLUCKED, // Guitar
    BASS,          // Bass
    STRINGS,       // Strings
    BRASS,         // Brass
    WOODWINDS,     // Sax / Woodwind
    SYNTHLEAD,     // Synth Lead
    SYNTHPAD,      // SynthPad/Choir
    SYNTHCOMP,     // Synth Comping
    CHROMATICPERC, // Chromatic Percussion
    DRUMPERC,      // Drum / Percussion
    SOUNDFX,       // Sound Effect
    MUSICALFX,     // Musical Effect
    ETHNIC,        // Ethnic
    VOCODER,       // Vocoder
    OTHER,         // No Assign
};
// clang-format on

} // namespace Category
} // namespace Cubase
} // namespace Vst
} // namespace Steinberg
