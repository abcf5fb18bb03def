#include "tools/common/platform/ProgramFile.h"

#include <filesystem>

namespace Steinberg {
namespace Vst {
namespace tools {

std::string programFile()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
