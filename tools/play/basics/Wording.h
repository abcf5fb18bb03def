// Wording: texts as play shows them in tables, sentences and on its progress bar.
#pragma once

#include "pluginterfaces/vst/vsttypes.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** A text that the plug-in wrote into its host's field, as UTF-8; it need not be terminated. */
std::string hostText(const String128& field);

/** At least width columns, counting the characters and not the bytes of UTF-8. */
std::string padded(const std::string& text, size_t width);

/** A path or name as a sentence shows it. */
std::string inQuotes(const std::string& text);

/** Seconds as minutes and seconds: "2:05". */
std::string minutes(double seconds);

/** How far a song is: "1:00 of 2:00", and never beyond its end. */
std::string minutesOf(double done, double all);

} // namespace play
} // namespace Vst
} // namespace Steinberg
