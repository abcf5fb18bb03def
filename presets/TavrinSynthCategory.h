// The synthesizer's own voice categories by name.
#pragma once

namespace Steinberg {
namespace Vst {
namespace TavrinSynth {

/** The synth's category names by their index. */
extern const char* const VoiceCategoryName[18];
/** Their sub-category names by [category][sub-category]; rows with fewer end with empty texts. */
extern const char* const VoiceSubCategoryName[18][6];

} // namespace TavrinSynth
} // namespace Vst
} // namespace Steinberg
