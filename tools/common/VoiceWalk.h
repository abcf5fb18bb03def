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

/** The most voices of one bank: with a library that answers for every number the walk would not
    end. */
constexpr int kMostVoices = 16384;

/** The numbers of all banks, ascending. */
std::vector<int> allBanks();

/** The banks' voices in order. A bank ends where the library has no text any more. The walk ends
    early when mustStop, asked before each voice, is true. @throws Failure for a bank that never
    ends */
std::vector<Voice> collectVoices(VstK2xPresetCreater& creater, const std::vector<int>& banks,
                                 bool (*mustStop)());

/** The text with "?" in place of control characters, which a terminal would act on. */
std::string printable(std::string text);

} // namespace tools
} // namespace Vst
} // namespace Steinberg
