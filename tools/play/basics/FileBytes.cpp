#include "tools/play/basics/FileBytes.h"

#include "tools/common/Failure.h"
#include "tools/play/basics/Wording.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr std::uintmax_t kLargestFile = std::uintmax_t{64} * 1024 * 1024;
} // namespace

std::vector<char> readFileBytes(const std::string& path, const std::string& kind)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw tools::Failure("There is no file " + inQuotes(path) + ".");
    if (!std::filesystem::is_regular_file(status))
        throw tools::Failure(inQuotes(path) + " is not a file but a folder or a device.");
    const auto size = std::filesystem::file_size(path, error);
    if (!error && size > kLargestFile)
        throw tools::Failure(inQuotes(path) + " is too large for " + kind + ".");
    std::ifstream stream(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(stream)),
                            std::istreambuf_iterator<char>());
    if (!stream)
        throw tools::Failure(inQuotes(path) + " cannot be read.");
    return bytes;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
