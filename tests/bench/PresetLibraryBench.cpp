// The preset library's generator against a bare loop that writes the same bytes under the same
// names.
//
//   ours    VstK2xPresetCreater::setVoiceDataInfo over every bank of the library
//   floor   open, write, close, once a file, with contents and names made beforehand
//
// Each side has a folder of its own.
#include "editorlib/EditorLibraryNames.h"
#include "presets/VstK2xPresetCreater.h"
#include "tests/bench/Table.h"
#include "tests/doubles/TemporaryHome.h"
#include "tools/common/VoiceWalk.h"
#include "tools/make-presets/EditorConnection.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace bench {

namespace {

using namespace Steinberg::Vst;
namespace fs = std::filesystem;

using Voices = std::map<unsigned, std::map<unsigned, std::string>>;

struct File {
    std::string name;
    std::string content;
};

Voices allVoices(VstIEditorConnect& library)
{
    VstK2xPresetCreater creater(library);
    std::vector<int> banks;
    for (int bank = VoiceBank::kFirst; bank <= VoiceBank::kLast; ++bank)
        banks.push_back(bank);
    Voices voices;
    for (const auto& voice : tools::collectVoices(creater, banks, [] { return false; }))
        voices[static_cast<unsigned>(voice.bank)][static_cast<unsigned>(voice.number)] = voice.text;
    return voices;
}

void writeOurs(VstIEditorConnect& library, Voices& voices)
{
    constexpr auto allBanks = static_cast<VstK2xPresetCreater::PresetType>(
        VstK2xPresetCreater::kAllVoiceBanks | VstK2xPresetCreater::kAllUserBanks);
    VstK2xPresetCreater(library).setVoiceDataInfo(
        voices, allBanks, VstK2xPresetCreater::kUserFolder, nullptr, true, false);
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

void presetLibrary(benchmark::State& state)
{
    const makepresets::EditorConnection library(editorLibraryPath());
    Voices voices = allVoices(library.get());
    const doubles::TemporaryHome home;
    writeOurs(library.get(), voices);
    const std::vector<File> files = readBack(home.home());
    if (files.empty())
        return fail(state, "the generator wrote no file");
    const fs::path floor = home.home() + "/floor";
    fs::create_directory(floor);
    if (!writeFloor(floor, files))
        return fail(state, "the floor could not write its files");
    compare(state, static_cast<double>(files.size()), {[&] { writeOurs(library.get(), voices); }},
            {[&] { writeFloor(floor, files); }});
}

} // namespace

void addPresetLibraryLines()
{
    addLine({"preset library, all banks, each file", "open, write, close of the same bytes",
             Unit::seconds, 1.3},
            presetLibrary);
}

} // namespace bench
