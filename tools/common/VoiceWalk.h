// VoiceWalk: every voice that the editor library has.
#pragma once

#include "presets/VstK2xPresetCreater.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace tools {

struct Voice {
    VoiceBank::Bank bank;
    int number;
    std::string text; ///< as the library gives it: category code, fields, name

    /** For people: bank, number and name, free of control characters. */
    std::string label() const;
};

/** How many voices of one bank are believed. A library that has an answer for every number would
    otherwise never let us go. */
constexpr int kMostVoices = 16384;

/** The banks' voices in order. A bank ends where the library has no text any more; so does the walk
    when mustStop, asked before each voice, says so. @throws Failure for a bank that never ends */
std::vector<Voice> collectVoices(VstK2xPresetCreater& creater, const std::vector<int>& banks,
                                 bool (*mustStop)());

/** text with "?" for what a terminal would act on. */
std::string printable(std::string text);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
