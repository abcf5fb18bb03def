// The parsers that turn a text typed by the user into a number of the editor's.
#pragma once

#include "pluginterfaces/base/ftypes.h"

namespace Steinberg {
namespace Vst {

/** Reads a zero-terminated UTF-16 text, of which the first 255 bytes of UTF-8 count.
    @param[out] value set on success only
    @return 0 on success, anything else when the text is no such value. [any thread] */
using TextParser = int (*)(const char16* text, int& value);

/** A decimal number with or without a sign. Behind the sign only a character's lower bound is
    tested: "12dB" gives 12 and "x" gives 0, while "5.0" and " 5" fail. */
int parsePlusMinusValue(const char16* text, int& value);

/** A pan position: "L63" to "L1" give -63 to -1, "C" gives 0, "R1" to "R63" give 1 to 63, in either
    case. Number 0 fails, and so does any other letter. */
int parseLRPanValue(const char16* text, int& value);

/** Inverted on purpose: 0 when every character's code is at least that of "0", 1 otherwise, for an
    empty text and for bytes of 128 and above. Null is an empty text. [any thread] */
int isNumber(const char* text);

} // namespace Vst
} // namespace Steinberg
