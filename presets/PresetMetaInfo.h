// The XML text from which the media browser reads a preset file's attributes.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

/** Makes the XML text of one file. The values are inserted as they are, so they must be escaped for
    XML: use texts of the category tables only, never a voice's name or a category's name of the
    library. [any thread; throws std::bad_alloc] */
std::string presetMetaInfo(const std::string& category, const std::string& subCategory,
                           const std::string& character);

} // namespace Vst
} // namespace Steinberg
