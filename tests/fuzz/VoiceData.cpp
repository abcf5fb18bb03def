// The library's texts of voices and its user banks, written as preset files. An input is
//   bank, number, types, options, the category's names, the voice's text, the bank's data
// The texts become file names, so it is also checked where the files are.
#include "presets/TavrinSynthCategory.h"
#include "presets/VstK2xPresetCreater.h"
#include "tests/doubles/PresetFileBytes.h"
#include "tests/doubles/ScriptedLibrary.h"
#include "tests/doubles/TemporaryHome.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LimitedMemory.h"
#include "tests/fuzz/PresetFileCheck.h"

#include <algorithm>
#include <limits>
#include <optional>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

enum Options : uint8_t {
    kFromMap = 1,     ///< the entry for a whole map, else the one for a single voice
    kExcluded = 2,    ///< the voice's name stands in the exclusion list
    kOverwrite = 4,   ///< of the map
    kStands = 8,      ///< a file of that name is there already
    kThrows = 16,     ///< the library, at every question for a name
    kOtherFolder = 32 ///< a number that stands for no output folder
};

constexpr char kForbidden[] = "\\/,:*?\"<>|";

struct Voice {
    int32 bank = 0;
    int32 number = 0;
    uint32 types = 0;
    uint8_t options = 0;
    std::string text;
    std::string userBank;
    std::optional<std::string> category;
    std::optional<std::string> subCategory;
};

/** A name of the synth's own, or any text, or none. */
std::optional<std::string> nameFrom(fuzz::FuzzInput& input, bool sub)
{
    const size_t index = input.byte();
    if (index == 255)
        return std::nullopt;
    if (index >= 18 * 6)
        return input.bytes(30);
    return std::string(sub ? TavrinSynth::VoiceSubCategoryName[index / 6][index % 6]
                           : TavrinSynth::VoiceCategoryName[index / 6]);
}

Voice voiceFrom(fuzz::FuzzInput& input)
{
    Voice voice;
    const auto bank = input.byte();
    voice.bank = bank < 200 ? bank % 16 : input.number<int32>();
    voice.number = input.number<int16_t>();
    voice.types = input.byte() & 1 ? 0x1707FF : input.number<uint32>();
    voice.options = input.byte();
    voice.category = nameFrom(input, false);
    voice.subCategory = nameFrom(input, true);
    voice.text = input.bytes(200);
    voice.userBank = input.rest();
    // The library fills a buffer of 30 bytes; a map holds any text.
    if (!(voice.options & kFromMap))
        voice.text = voice.text.substr(0, std::min<size_t>(voice.text.find('\0'), 30));
    return voice;
}

doubles::BufferAnswer answer(const std::optional<std::string>& text)
{
    return {text, text ? 0 : 1};
}

void script(doubles::ScriptedLibrary& library, const Voice& voice)
{
    library.voiceData = [&](int32, int32) { return answer(voice.text); };
    library.categoryName = [&](int32) { return answer(voice.category); };
    library.subCategoryName = [&](int32, int32) { return answer(voice.subCategory); };
    library.userBank = [&](int32, int32) {
        return std::vector<char>(voice.userBank.begin(), voice.userBank.end());
    };
    if (voice.options & kThrows)
        library.throwAt("getSubCategoryName");
}

std::string fileNameOf(const std::string& text)
{
    auto name = text.substr(text.rfind(':') + 1); // the whole text without a colon: npos + 1 is 0
    for (char& byte : name)
        if (byte && std::strchr(kForbidden, byte))
            byte = '_';
    return name;
}

/** Whether the first field is a whole decimal number of 32 bits: blanks, a sign, digits; or
    empty. */
bool hasCode(const std::string& text)
{
    const auto field = text.substr(0, text.find(':'));
    if (field.empty())
        return true;
    size_t at = field.find_first_not_of(" \t\n\v\f\r");
    if (at == std::string::npos)
        return false;
    const bool negative = field[at] == '-';
    at += field[at] == '-' || field[at] == '+' ? 1 : 0;
    if (at == field.size())
        return false;
    int64 code = 0;
    for (; at < field.size(); ++at) {
        if (field[at] < '0' || field[at] > '9')
            return false;
        code = std::min<int64>(code * 10 + (field[at] - '0'), int64(1) << 40);
    }
    return code <= int64(std::numeric_limits<int32>::max()) + (negative ? 1 : 0);
}

bool isUserBank(int32 bank)
{
    return bank == 8 || bank == 9 || bank == 10 || bank == 14;
}

uint32 bitOf(int32 bank)
{
    constexpr uint32 bits[] = {0x1,     0x2,     0x4,     0x8,   0x10,  0x20,  0x40,    0x80,
                               0x10000, 0x20000, 0x40000, 0x100, 0x200, 0x400, 0x100000};
    return bank >= 0 && bank <= 14 ? bits[bank] : 0;
}

std::string controllerStateOf(const Voice& voice)
{
    using doubles::le32;
    const auto front = le32(voice.bank) + le32(voice.number);
    if (!isUserBank(voice.bank))
        return le32(1) + front;
    return le32(2) + front + le32(static_cast<int32>(voice.userBank.size())) + voice.userBank;
}

/** Results of the pieces, which need no folder. */
void checkPieces(VstK2xPresetCreater& creater, const Voice& voice)
{
    const auto expected = fileNameOf(voice.text);
    std::string fileName;
    std::string voiceName;
    std::string category = "as it was";
    std::string subCategory = "as it was";
    const int result =
        creater.separationVoiceData(voice.text, fileName, voiceName, category, subCategory);
    const bool split = hasCode(voice.text) && voice.category && voice.subCategory &&
                       (voice.options & kThrows) == 0;
    FUZZ_CHECK(result == (split ? 0 : 1));
    FUZZ_CHECK(fileName == expected && voiceName == voice.text.substr(voice.text.rfind(':') + 1));
    FUZZ_CHECK(VstK2xPresetCreater::searchNotFilenameLang(fileName) == -1);
    if (split)
        FUZZ_CHECK(category == voice.category->c_str() &&
                   subCategory == voice.subCategory->c_str());

    const auto bank = static_cast<VoiceBank::Bank>(voice.bank);
    FUZZ_CHECK(VstK2xPresetCreater::bankToPresetType(bank) == bitOf(voice.bank));
    std::string texts[3];
    FUZZ_CHECK(VstK2xPresetCreater::convertCubaseCategoryName(
                   voiceName, category, subCategory, texts[0], texts[1], texts[2], bank) == 0);
    FUZZ_CHECK(!texts[0].empty() || (texts[1].empty() && texts[2].empty()));
}

void write(VstK2xPresetCreater& creater, const Voice& voice, const std::string& fileName)
{
    const auto types = static_cast<VstK2xPresetCreater::PresetType>(voice.types);
    const auto dir =
        static_cast<VstK2xPresetCreater::OutputDir>((voice.options & kOtherFolder) ? 2 : 1);
    if (!(voice.options & kFromMap)) {
        creater.setVoiceDataInfo(static_cast<VoiceBank::Bank>(voice.bank), voice.number, types,
                                 dir);
        return;
    }
    std::map<unsigned, std::map<unsigned, std::string>> voices;
    voices[static_cast<unsigned>(voice.bank)][static_cast<unsigned>(voice.number)] = voice.text;
    const std::vector<const char*> excluded = {nullptr, "Init", fileName.c_str()};
    const bool excludes = (voice.options & kExcluded) != 0;
    creater.setVoiceDataInfo(voices, types, dir, excludes ? &excluded : nullptr,
                             (voice.options & kOverwrite) != 0, false);
}

/** No folder can hold a file of that name, or the SDK's stream cannot take the name. */
bool isAwkward(const std::string& fileName)
{
    return fileName.size() > 240 || fileName.find('\0') != std::string::npos;
}

/** What the file must hold after the call: nothing where there is to be none. */
std::optional<std::string> expectedState(const Voice& voice, bool stands)
{
    const bool fromMap = (voice.options & kFromMap) != 0;
    const bool asked = bitOf(voice.bank) & voice.types;
    const bool split = hasCode(voice.text) && voice.category && voice.subCategory &&
                       (voice.options & (kThrows | kOtherFolder)) == 0;
    const bool kept =
        fromMap && ((voice.options & kExcluded) || (stands && (voice.options & kOverwrite) == 0));
    if (!asked || !split || kept)
        return std::nullopt;
    // An empty user bank leaves an empty file.
    return isUserBank(voice.bank) && voice.userBank.empty() ? "" : controllerStateOf(voice);
}

/** Clears what the last input left; the folder itself stays. */
void clearFolder(const std::string& folder)
{
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none))
        std::filesystem::remove_all(entry.path(), none);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const doubles::TemporaryHome home;
    const fuzz::LimitedMemory limited;
    fuzz::FuzzInput input(data, size);
    const Voice voice = voiceFrom(input);
    doubles::Trace trace;
    doubles::ScriptedLibrary library(trace);
    script(library, voice);
    VstK2xPresetCreater creater(library);
    checkPieces(creater, voice);

    clearFolder(home.presetFolder());
    const auto fileName = fileNameOf(voice.text);
    const auto file = fileName + ".vstpreset";
    const bool stands = (voice.options & kStands) != 0 && !isAwkward(fileName);
    if (stands) {
        std::filesystem::create_directories(home.presetFolder());
        home.write(file, "before");
    }
    write(creater, voice, fileName);

    const auto files = home.files();
    FUZZ_CHECK(files.size() <= 1);
    FUZZ_CHECK(files.empty() || files.begin()->compare(0, 8, "OUTSIDE ") != 0 ||
               file.compare(0, 8, "OUTSIDE ") == 0);
    if (isAwkward(fileName))
        return 0;
    const auto expected = expectedState(voice, stands);
    FUZZ_CHECK(files.count(file) == (expected || stands ? 1 : 0));
    const auto content = home.content(file);
    if (!expected)
        FUZZ_CHECK(content == (stands ? "before" : ""));
    else if (expected->empty())
        FUZZ_CHECK(content.empty());
    else
        fuzz::checkPresetFile(content, *expected);
    return 0;
}
