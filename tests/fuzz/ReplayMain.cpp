// Runs a fuzz target once for each file that is named, and each file of each folder.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

void replay(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // The name stands there if the input ends the process.
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv)
{
    size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            replay(argv[i]);
            ++count;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            replay(entry.path());
            ++count;
        }
    }
    // A folder that is empty, or in another place by now, must not look like success.
    std::printf("%zu inputs\n", count);
    return count > 0 ? 0 : 1;
}
