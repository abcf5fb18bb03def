#include "tools/play/FileBytes.h"

#include "tools/play/Failure.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr std::uintmax_t kLargestFile = std::uintmax_t{64} * 1024 * 1024;
} // namespace

std::string inQuotes(const std::string& text)
{
    return "\"" + text + "\"";
}

std::vector<char> readFileBytes(const std::string& path, const std::string& kind)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw Failure("There is no file " + inQuotes(path) + ".");
    if (!std::filesystem::is_regular_file(status))
        throw Failure(inQuotes(path) + " is not a file but a folder or a device.");
    const auto size = std::filesystem::file_size(path, error);
    if (!error && size > kLargestFile)
        throw Failure(inQuotes(path) + " is too large for " + kind + ".");
    std::ifstream stream(path, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(stream)),
                            std::istreambuf_iterator<char>());
    if (!stream)
        throw Failure(inQuotes(path) + " cannot be read.");
    return bytes;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
