// The XML text by which the media browser lists a preset file.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

/** The attributes of one file. The values go in as they stand and therefore come escaped for XML.
    [any thread] */
std::string presetMetaInfo(const std::string& category, const std::string& subCategory,
                           const std::string& character);

} // namespace Vst
} // namespace Steinberg
