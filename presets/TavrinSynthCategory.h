// The synthesizer's own voice categories by name. The editor library's boundary has them, since the
// library answers with the same texts; whoever deals with presets finds them here.
#pragma once

#include "editorlib/TavrinSynthCategory.h" // IWYU pragma: export
