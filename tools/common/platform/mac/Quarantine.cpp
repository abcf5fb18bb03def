#include "tools/common/platform/Quarantine.h"

#include <sys/xattr.h>

namespace Steinberg {
namespace Vst {
namespace tools {

bool isQuarantined(const std::string& file)
{
    return getxattr(file.c_str(), "com.apple.quarantine", nullptr, 0, 0, 0) >= 0;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
