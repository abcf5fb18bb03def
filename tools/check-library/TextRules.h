// TextRules: what the contract asks of the library's texts.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** What is wrong with a text, as the end of a sentence: "is no UTF-8". Empty for a good one. */
std::string faultOf(const std::string& text);

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
