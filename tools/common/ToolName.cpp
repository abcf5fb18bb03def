#include "tools/common/ToolName.h"

#include "tools/common/platform/ProgramFile.h"

#include <filesystem>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {
constexpr const char* kInstalledPrefix = "rdl3-rdl5-";
}

std::string toolName(const std::string& tool)
{
    const auto running = std::filesystem::path(programFile()).filename().string();
    return running.rfind(kInstalledPrefix, 0) == 0 ? kInstalledPrefix + tool : tool;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
