#include "tools/common/platform/ProgramFile.h"

#include <filesystem>
#include <mach-o/dyld.h>

namespace Steinberg {
namespace Vst {
namespace tools {

std::string programFile()
{
    uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size); // says how much room it wants, with the terminator
    std::string path(size, '\0');
    if (_NSGetExecutablePath(path.data(), &size) != 0)
        return {};
    path.resize(path.find('\0'));
    std::error_code error;
    return std::filesystem::canonical(path, error).string();
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
