// The names of the synthesizer's own voice categories, for the code of presets. They are defined in
// editorlib/, since the editor library gives the same texts.
#pragma once

#include "editorlib/TavrinSynthCategory.h" // IWYU pragma: export
