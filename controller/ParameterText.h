// Parsers for the texts that a user types as a parameter's value.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {

/** Reads a zero-terminated UTF-16 text; only its first 255 bytes as UTF-8 are read.
    @param[out] value set on success only
    @return 0 on success, another number when the text is not such a value. [any thread] */
using TextParser = int (*)(const char16* text, int& value);

/** Reads a decimal number with or without a sign. The characters after the sign must not be below
    "0", and are not tested otherwise: "12dB" gives 12 and "x" gives 0, but "5.0" and " 5" fail. */
int parsePlusMinusValue(const char16* text, int& value);

/** Reads a pan position in upper or lower case: "L63" to "L1" give -63 to -1, "C" gives 0, "R1" to
    "R63" give 1 to 63. The number 0 fails, and so does any other letter. */
int parseLRPanValue(const char16* text, int& value);

/** 0, not 1, for a number: when all character codes are from that of "0" to 127. 1 for any other
    text, for an empty one and for null. [any thread] */
int isNumber(const char* text);

} // namespace Vst
} // namespace Steinberg
