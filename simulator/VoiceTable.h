// VoiceTable: the names in the simulated instrument, every one of them made up.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

struct VoiceRow {
    int32 bank;
    int32 mainCategory;
    int32 subCategory;
    const char* name; ///< UTF-8
};

constexpr int32 mainCategories = 18;
constexpr int32 subCategories = 6;

extern const char* const categoryNames[mainCategories];
extern const char* const subCategoryNames[mainCategories][subCategories];

/** Ordered by bank; a voice's number is its place within its bank. */
extern const VoiceRow voiceTable[];
extern const size_t voiceTableSize;

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
