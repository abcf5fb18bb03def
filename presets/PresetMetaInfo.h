// The XML text by which the media browser lists a preset file.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

/** The attributes of one file. The values go in as they stand and therefore come escaped for XML:
    a "&", "<" or quotation mark in one would leave a text that no parser reads. That is why only
    the category tables' texts come here, never a voice's name or what the library calls a category.
    [any thread; throws std::bad_alloc] */
std::string presetMetaInfo(const std::string& category, const std::string& subCategory,
                           const std::string& character);

} // namespace Vst
} // namespace Steinberg
