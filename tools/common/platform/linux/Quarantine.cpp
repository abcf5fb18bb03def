#include "tools/common/platform/Quarantine.h"

namespace Steinberg {
namespace Vst {
namespace tools {

bool isQuarantined(const std::string& /*file*/)
{
    return false;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
