// The preset library's generator against a bare loop that writes the same bytes under the same
// names.
//
//   ours    VstK2xPresetCreater::setVoiceDataInfo over every single voice of the library
//   floor   open, write, close, once a file, with contents and names made beforehand
//
// Each iteration times both, one after the other, into folders of their own, so that "ratio" holds
// however fast the machine is at that moment.
#include "editorlib/EditorLibraryNames.h"
#include "presets/VstK2xPresetCreater.h"
#include "tools/make-presets/EditorConnection.h"
#include "tools/make-presets/VoiceWalk.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

using namespace Steinberg::Vst;
namespace fs = std::filesystem;

using Voices = std::map<unsigned, std::map<unsigned, std::string>>;

/** A folder that lasts as long as this object. */
class ScratchFolder {
public:
    ScratchFolder()
    {
        std::string name = (fs::temp_directory_path() / "preset-bench.XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~ScratchFolder() { fs::remove_all(path); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    fs::path path;
};

struct File {
    std::string name;
    std::string content;
};

Voices singleVoices(VstIEditorConnect& library)
{
    VstK2xPresetCreater creater(library);
    Voices voices;
    for (const auto& voice :
         makepresets::collectVoices(creater, {0, 1, 2, 3, 4, 5, 6, 7, 11, 12, 13}))
        voices[static_cast<unsigned>(voice.bank)][static_cast<unsigned>(voice.number)] = voice.text;
    return voices;
}

void writeOurs(VstIEditorConnect& library, Voices& voices)
{
    VstK2xPresetCreater(library).setVoiceDataInfo(voices, VstK2xPresetCreater::kAllVoiceBanks,
                                                  VstK2xPresetCreater::kUserFolder, nullptr, true,
                                                  false);
}

std::vector<File> readBack(const fs::path& folder)
{
    std::vector<File> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        files.push_back(
            {entry.path().filename().string(),
             {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()}});
    }
    return files;
}

/** @return whether every byte was written */
bool writeFloor(const fs::path& folder, const std::vector<File>& files)
{
    bool whole = true;
    for (const File& file : files) {
        const std::string name = (folder / file.name).string();
        const int handle = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        const auto written = write(handle, file.content.data(), file.content.size());
        whole = whole && written == static_cast<ssize_t>(file.content.size());
        close(handle);
    }
    return whole;
}

template <typename Work>
double secondsOf(Work&& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void presetLibrary(benchmark::State& state)
{
    const makepresets::EditorConnection library(editorLibraryPath());
    Voices voices = singleVoices(library.get());
    const ScratchFolder home;
    const ScratchFolder floor;
    setenv("HOME", home.path.c_str(), 1);
    writeOurs(library.get(), voices);
    const std::vector<File> files = readBack(home.path);
    if (files.empty()) {
        state.SkipWithError("the generator wrote no file");
        return;
    }
    double ours = 0;
    double bare = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        bool whole = false;
        bare += secondsOf([&] { whole = writeFloor(floor.path, files); });
        if (!whole) {
            state.SkipWithError("the floor could not write its files");
            return;
        }
        const double seconds = secondsOf([&] { writeOurs(library.get(), voices); });
        ours += seconds;
        state.SetIterationTime(seconds);
    }
    state.counters["files"] = static_cast<double>(files.size());
    state.counters["ours files/s"] = static_cast<double>(files.size() * state.iterations()) / ours;
    state.counters["floor files/s"] = static_cast<double>(files.size() * state.iterations()) / bare;
    state.counters["ratio"] = ours / bare;
}
BENCHMARK(presetLibrary)->UseManualTime()->Unit(benchmark::kMillisecond)->Repetitions(5);

} // namespace

BENCHMARK_MAIN();
