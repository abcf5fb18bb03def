// VoiceTable: the voices of the simulated instrument. All names are made up.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

struct VoiceRow {
    int32 bank;
    int32 mainCategory; ///< this and the next are indices of TavrinSynth
    int32 subCategory;
    const char* name; ///< UTF-8
};

/** Ordered by bank; a voice's number is its place within its bank. */
extern const VoiceRow voiceTable[];
extern const size_t voiceTableSize;

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
