// The names of the synthesizer's own voice categories. The editor library gives a voice's category
// as one of these texts.
#pragma once

namespace Steinberg {
namespace Vst {
namespace TavrinSynth {

// clang-format off
/** By the category's index. */
inline constexpr const char* VoiceCategoryName[18] = {
    "Acoustic Piano",
    "Keyboard",
    "Organ",
    "Guitar",
    "Bass",
    "Strings",
    "Brass",
    "Sax / Woodwind",
    "Synth Lead",
    "SynthPad/Choir",
    "Synth Comping",
    "Chromatic Percussion",
    "Drum / Percussion",
    "Sound Effect",
    "Musical Effect",
    "Ethnic",
    "Vocoder",
    "No Assign",
};

/** By [category][sub-category]; rows with fewer sub-categories end with empty texts. */
inline constexpr const char* VoiceSubCategoryName[18][6] = {
    {"Acoustic", "Layer", "Modern", "Vintage", "Arpeggio", "No Assign"},
    {"Electric Piano", "FM Piano", "Clavi", "Synth", "Arpeggio", "No Assign"},
    {"Tone Wheel", "Combo", "Pipe", "Synth", "Arpeggio", "No Assign"},
    {"Acoustic", "Electric Clean", "Electric Distortion", "Synth", "Arpeggio", "No Assign"},
    {"Acoustic", "Electric", "Synth", "Arpeggio", "No Assign", ""},
    {"Solo", "Ensemble", "Pizzicato", "Synth", "Arpeggio", "No Assign"},
    {"Solo", "Brass Ensemble", "Orchestra", "Synth", "Arpeggio", "No Assign"},
    {"Saxophone", "Flute", "Woodwind", "Reed / Pipe", "Arpeggio", "No Assign"},
    {"Analog", "Digital", "Hip Hop", "Dance", "Arpeggio", "No Assign"},
    {"Analog", "Warm", "Bright", "Choir", "Arpeggio", "No Assign"},
    {"Analog", "Digital", "Fade", "Hook", "Arpeggio", "No Assign"},
    {"Mallet Percussion", "Bell", "Synth Bell", "Pitched Drum", "Arpeggio", "No Assign"},
    {"Drums", "Percussion", "Synth", "Arpeggio", "No Assign", ""},
    {"Moving", "Ambient", "Nature", "Sci-Fi", "Arpeggio", "No Assign"},
    {"Moving", "Ambient", "Sweep", "Hit", "Arpeggio", "No Assign"},
    {"Bowed", "Plucked", "Struck", "Blown", "Arpeggio", "No Assign"},
    {"No Assign", "", "", "", "", ""},
    {"No Assign", "", "", "", "", ""},
};
// clang-format on

} // namespace TavrinSynth
} // namespace Vst
} // namespace Steinberg
