#include "tests/tools/ScratchFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace doubles {

ScratchFolder::ScratchFolder()
{
    auto name = (std::filesystem::temp_directory_path() / "play-test-XXXXXX").string();
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no scratch folder");
    folder = name;
}

ScratchFolder::~ScratchFolder()
{
    std::error_code error;
    std::filesystem::remove_all(folder, error);
}

std::string ScratchFolder::write(const std::string& name, const std::string& bytes) const
{
    std::ofstream(file(name), std::ios::binary) << bytes;
    return file(name);
}

std::string ScratchFolder::read(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace doubles
