// Runs a fuzz target without a fuzzer's library.
//
//   fuzz-TARGET PATH...             once for each file that is named, and each of each folder
//   fuzz-TARGET --runs N PATH...    N inputs made from those, the same ones each time
// An input of the second kind that ends the process is left behind as ./broken-input-NUMBER.
#include "tests/fuzz/Mutator.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

using Paths = std::vector<std::filesystem::path>;

/** In an order that is the same on every machine. */
Paths inputsIn(char** first, char** last)
{
    Paths paths;
    for (; first != last; ++first) {
        if (!std::filesystem::is_directory(*first)) {
            paths.emplace_back(*first);
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(*first))
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void runOnce(const std::string& bytes)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

int replay(const Paths& paths)
{
    for (const auto& path : paths) {
        // Before the input runs, in case it ends the process.
        std::printf("%s\n", path.c_str());
        std::fflush(stdout);
        runOnce(bytesOf(path));
    }
    std::printf("%zu inputs\n", paths.size());
    return 0;
}

fuzz::Mutator mutatorOf(const Paths& paths)
{
    std::vector<std::string> kept;
    for (const auto& path : paths)
        kept.push_back(bytesOf(path));
    return fuzz::Mutator(std::move(kept));
}

/** Makes the inputs again, up to the one that ended the process. */
int keepBroken(const Paths& paths, unsigned long run)
{
    auto mutator = mutatorOf(paths);
    std::string input;
    for (unsigned long made = 0; made < run; ++made)
        input = mutator.next();
    const auto name = "broken-input-" + std::to_string(run);
    std::ofstream(name, std::ios::binary) << input;
    std::printf("input %lu ended the process, and is kept as %s\n", run, name.c_str());
    return 1;
}

/** In a process of its own, so that an input that ends it can be reported. */
int search(const Paths& paths, unsigned long runs)
{
    void* shared = mmap(nullptr, sizeof(unsigned long), PROT_READ | PROT_WRITE,
                        MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        return 1;
    auto* run = static_cast<volatile unsigned long*>(shared);
    const pid_t child = fork();
    if (child == 0) {
        auto mutator = mutatorOf(paths);
        while (*run < runs) {
            *run = *run + 1;
            runOnce(mutator.next());
        }
        *run = runs + 1;
        std::exit(0); // and what a sanitizer finds at the end
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return 1;
    if (*run <= runs)
        return keepBroken(paths, *run);
    std::printf("%lu runs\n", runs);
    return status == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const bool searches = argc > 2 && std::strcmp(argv[1], "--runs") == 0;
    const auto paths = inputsIn(argv + (searches ? 3 : 1), argv + argc);
    // No success when the folder is empty or was moved.
    if (paths.empty()) {
        std::fputs("no inputs\n", stderr);
        return 1;
    }
    if (!searches)
        return replay(paths);
    const unsigned long runs = std::strtoul(argv[2], nullptr, 10);
    if (runs == 0) {
        std::fputs("no runs\n", stderr);
        return 1;
    }
    return search(paths, runs);
}
