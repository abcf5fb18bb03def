// Voices: the simulated instrument's voice list and its categories. Fixed data.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Size of the buffers that names and voice data are written to; a text that fills one has no
    terminator. */
constexpr size_t nameBufferSize = 30;

/** How many voices a bank has; 0 for what is no bank. Numbers count from 0 without gaps. */
int32 voiceCount(int32 bank);
bool voiceExists(int32 bank, int32 number);

/** Write a text and zeros after it into nameBufferSize bytes. They give false, and write nothing,
   for a null buffer or for what is not in the list. */
bool writeVoiceData(int32 bank, int32 number, char* buffer);
bool writeCategoryName(int32 mainCategory, char* buffer);
/** Each main category has six sub-categories; the unused last ones have empty names. */
bool writeSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer);

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
