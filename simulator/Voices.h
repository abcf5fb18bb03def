// Voices: the simulated instrument's voices and their categories, which never change.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Size of the buffers into which names and voice data are written. A text that fills its buffer
    has no terminator. */
constexpr size_t nameBufferSize = 30;

/** How many voices a bank has; 0 for an unknown bank. They are numbered from 0 without gaps. */
int32 voiceCount(int32 bank);
bool voiceExists(int32 bank, int32 number);

// These three write a text, and zeros after it, into nameBufferSize bytes. They return false, and
// write nothing, for a null buffer and for an unknown voice or category.
bool writeVoiceData(int32 bank, int32 number, char* buffer);
bool writeCategoryName(int32 mainCategory, char* buffer);
/** Each main category has six sub-categories; the unused last ones have empty names. */
bool writeSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer);

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
