// ParameterTable: the editor parameters of a part that the host sees.
#pragma once

#include "controller/ParameterText.h"
#include "editorlib/VstIObserver.h"

#include <array>

namespace Steinberg {
namespace Vst {

/** One row: the parameter's address in the editor, and how the host sees it. */
struct PartParameter {
    const char* title; ///< "%d" stands for the part's number, 1 to 16
    int block;
    int number; ///< within the block
    TextParser parser;
    int32 parseOffset;     ///< added to the parsed number
    bool asksForStepCount; ///< ask the library; if false the step count is 0
};

constexpr int kPartCount = 16;

/** In the order in which the host lists them. The titles of the knobs have no part number. */
constexpr std::array<PartParameter, 14> kPartParameters = {{
    {"Volume %d", 37, 12, parsePlusMinusValue, 0, false},
    {"Pan %d", 37, 13, parseLRPanValue, 64, false},
    {"Cutoff %d", 37, 53, parsePlusMinusValue, 64, false},
    {"Resonance %d", 37, 54, parsePlusMinusValue, 64, false},
    {"AEG Attack Time %d", 37, 44, parsePlusMinusValue, 64, false},
    {"AEG Decay Time %d", 37, 45, parsePlusMinusValue, 64, false},
    {"AEG Sustain Level %d", 37, 46, parsePlusMinusValue, 64, false},
    {"AEG Release Time %d", 37, 47, parsePlusMinusValue, 64, false},
    {"Chorus Send %d", 37, 16, parsePlusMinusValue, 0, false},
    {"Reverb Send %d", 37, 15, parsePlusMinusValue, 0, false},
    {"Assignable Function %d-1", 19, 1, nullptr, 0, true},
    {"Assignable Function %d-2", 19, 2, nullptr, 0, true},
    {"Assignable Knob 1", 37, 56, parsePlusMinusValue, 64, false},
    {"Assignable Knob 2", 37, 57, parsePlusMinusValue, 64, false},
}};

/** The edit flag: whether the voice was edited. Not automatable, without title and unit. Its block
    and its number within the block. */
constexpr int kEditFlagBlock = 201;
constexpr int kEditFlagNumber = 5;

/** The VST parameter ID of an editor parameter: block, number and part as one decimal number,
    "%d%03d%03d". For ParamModeCommon 16 stands in place of the part. [any thread] */
unsigned vstParameterID(int block, int number, int part, VstIObserver::ParamModeType mode);

} // namespace Vst
} // namespace Steinberg
