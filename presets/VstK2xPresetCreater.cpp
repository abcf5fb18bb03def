#include "presets/VstK2xPresetCreater.h"

#include "basics/CallGuard.h"
#include "basics/PlugInInfo.h"
#include "editorlib/VstIEditorConnect.h"
#include "presets/PresetMetaInfo.h"
#include "presets/VoiceText.h"
#include "presets/VstK2xPreset.h"
#include "presets/VSTK2xTvrSynthConverter.h"
#include "presets/VstK2xUserBank.h"

#include "pluginterfaces/base/smartpointer.h"
#include "public.sdk/source/common/memorystream.h"

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <set>
#include <string_view>

namespace Steinberg {
namespace Vst {
namespace {

constexpr char kFileExtension[] = ".vstpreset";

using PresetType = VstK2xPresetCreater::PresetType;

/** The bit of each bank, by its number. */
constexpr PresetType kTypeOfBank[] = {
    VstK2xPresetCreater::kBank0,      VstK2xPresetCreater::kBank1,
    VstK2xPresetCreater::kBank2,      VstK2xPresetCreater::kBank3,
    VstK2xPresetCreater::kBank4,      VstK2xPresetCreater::kBank5,
    VstK2xPresetCreater::kBank6,      VstK2xPresetCreater::kBank7,
    VstK2xPresetCreater::kUserBank8,  VstK2xPresetCreater::kUserBank9,
    VstK2xPresetCreater::kUserBank10, VstK2xPresetCreater::kBank11,
    VstK2xPresetCreater::kBank12,     VstK2xPresetCreater::kBank13,
    VstK2xPresetCreater::kUserBank14,
};

/** The banks, one bit each, in whose voices' names search words are looked for. */
constexpr unsigned kKeywordBanks = 0x38FF;

bool isBank(VoiceBank::Bank bank)
{
    return static_cast<unsigned>(bank) <= VoiceBank::kLast;
}

bool isSearchedForWords(VoiceBank::Bank bank)
{
    return !isBank(bank) || (kKeywordBanks >> static_cast<unsigned>(bank) & 1U) != 0;
}

/** File names, borrowed. A set, because the list may be as long as the library: searching it for
    each voice would take too long. */
using FileNames = std::set<std::string_view>;

/** @param names may be null and hold nulls */
FileNames setOf(const std::vector<const char*>* names)
{
    FileNames set;
    if (!names)
        return set;
    for (const char* name : *names)
        if (name)
            set.insert(name);
    return set;
}

/** Sets base to the folder that contains "/Library". @return false for a user without HOME and for
    another value of dir */
bool baseFolder(VstK2xPresetCreater::OutputDir dir, std::string& base)
{
    if (dir == VstK2xPresetCreater::kSystemFolder) {
        base.clear();
        return true;
    }
    const char* home = dir == VstK2xPresetCreater::kUserFolder ? std::getenv("HOME") : nullptr;
    if (!home || *home == '\0')
        return false;
    base = home;
    return true;
}

/** Restores errno at the end of its scope. */
class ErrnoKeeper {
public:
    ErrnoKeeper() = default;
    ~ErrnoKeeper() { errno = kept; }
    ErrnoKeeper(const ErrnoKeeper&) = delete;
    ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;

private:
    const int kept = errno;
};

/** Keeps errno, which is to tell of the file that is being written and not of the
    library's work. */
std::vector<char> userBankData(VstIEditorConnect& library, VoiceBank::Bank bank, int number)
{
    const ErrnoKeeper keeper;
    return library.getUserBankData(bank, number);
}

IPtr<IBStream> openForWriting(const std::string& file)
{
    // As a C string the name would end at the zero byte and be that of another file.
    if (file.find('\0') != std::string::npos)
        return nullptr;
    return owned(FileStream::open(file.c_str(), "wb"));
}

} // namespace

VstK2xPresetCreater::VstK2xPresetCreater(VstIEditorConnect& connect)
: editorConnect(connect)
{
}

void VstK2xPresetCreater::setVoiceDataInfo(VoiceBank::Bank bank, int number, PresetType types,
                                           OutputDir dir) noexcept
{
    guarded([&] {
        presetTypes = types;
        std::string path;
        if (createOutputPath(path, dir) != 0 || !isAsked(bank))
            return;
        std::string voiceData, fileName, voiceName, category, subCategory;
        if (fetchVoiceData(bank, number, voiceData) != 0 ||
            separationVoiceData(voiceData, fileName, voiceName, category, subCategory) != 0)
            return;
        createPresetFile(path, voiceName, fileName, category, subCategory, bank,
                         static_cast<unsigned>(number), nullptr, true, false);
    });
}

void VstK2xPresetCreater::setVoiceDataInfo(
    std::map<unsigned, std::map<unsigned, std::string>>& voices, PresetType types, OutputDir dir,
    const std::vector<const char*>* excluded, bool overwrite, bool) noexcept
{
    guarded([&] {
        if (voices.empty())
            return;
        presetTypes = types;
        std::string path;
        if (createOutputPath(path, dir) != 0)
            return;
        const FileNames excludedNames = setOf(excluded);
        for (const auto& [key, voicesOfBank] : voices) {
            const auto bank = static_cast<VoiceBank::Bank>(key);
            if (!isAsked(bank))
                continue;
            for (const auto& [number, voiceData] : voicesOfBank) {
                std::string fileName, voiceName, category, subCategory;
                if (separationVoiceData(voiceData, fileName, voiceName, category, subCategory) ==
                        0 &&
                    excludedNames.count(fileName) == 0)
                    writePresetFile(path, voiceName, fileName, category, subCategory, bank, number,
                                    overwrite);
            }
        }
    });
}

int VstK2xPresetCreater::outputPath(std::string& path, OutputDir dir) noexcept
{
    return guarded(1, [&] {
        std::string base;
        if (!baseFolder(dir, base))
            return 1;
        std::string plugIn = kPlugInName;
        changeNotFileNameLang(plugIn);
        path = base + "/Library/Audio" + VSTPresetDirName + PathSlash + kPlugInVendor + PathSlash +
               plugIn;
        return 0;
    });
}

int VstK2xPresetCreater::createOutputPath(std::string& path, OutputDir dir) noexcept
{
    return outputPath(path, dir) == 0 ? createPresetDirectoryMac(path, nullptr) : 1;
}

bool VstK2xPresetCreater::isCreatePresetBank(VoiceBank::Bank bank) const noexcept
{
    return !isAsked(bank);
}

bool VstK2xPresetCreater::isAsked(VoiceBank::Bank bank) const noexcept
{
    return (bankToPresetType(bank) & presetTypes) != 0;
}

VstK2xPresetCreater::PresetType VstK2xPresetCreater::bankToPresetType(VoiceBank::Bank bank) noexcept
{
    return isBank(bank) ? kTypeOfBank[bank] : kNoBank;
}

int VstK2xPresetCreater::fetchVoiceData(VoiceBank::Bank bank, int number,
                                        std::string& voiceData) noexcept
{
    return guarded(1, [&] {
        LibraryText text;
        if (editorConnect.getVoiceDataString(bank, number, text.buffer()) != 0)
            return 1;
        voiceData = text.text();
        return 0;
    });
}

int VstK2xPresetCreater::separationVoiceData(const std::string& voiceData, std::string& fileName,
                                             std::string& voiceName, std::string& category,
                                             std::string& subCategory) noexcept
{
    return guarded(1, [&] {
        const std::string name = voiceNameOf(voiceData);
        const auto code = categoryCodeOf(voiceData);
        voiceName = name;
        fileName = name;
        changeNotFileNameLang(fileName);
        if (!code)
            return 1;
        LibraryText mainName;
        LibraryText subName;
        const int32 main = *code / 16;
        if (editorConnect.getCategoryName(main, mainName.buffer()) != 0 ||
            editorConnect.getSubCategoryName(main, *code % 16, subName.buffer()) != 0)
            return 1;
        category = mainName.text();
        subCategory = subName.text();
        return 0;
    });
}

int VstK2xPresetCreater::createPresetFile(const std::string& path, const std::string& voiceName,
                                          const std::string& fileName, const std::string& category,
                                          const std::string& subCategory, VoiceBank::Bank bank,
                                          unsigned number, const std::vector<const char*>* excluded,
                                          bool overwrite, bool) noexcept
{
    return guarded(static_cast<int>(kNotWritten), [&]() -> int {
        if (setOf(excluded).count(fileName) != 0)
            return kExcluded;
        return writePresetFile(path, voiceName, fileName, category, subCategory, bank, number,
                               overwrite);
    });
}

int VstK2xPresetCreater::writePresetFile(const std::string& path, const std::string& voiceName,
                                         const std::string& fileName, const std::string& category,
                                         const std::string& subCategory, VoiceBank::Bank bank,
                                         unsigned number, bool overwrite) noexcept
{
    return guarded(static_cast<int>(kNotWritten), [&]() -> int {
        const std::string file = path + PathSlash + fileName + kFileExtension;
        if (!overwrite) {
            const auto found = platform::findInFolder(path, fileName + kFileExtension);
            if (found == platform::InFolder::noFolder)
                return kNotOpened;
            if (found == platform::InFolder::exists)
                return kNotWritten;
        }
        const auto stream = openForWriting(file);
        if (!stream)
            return kNotOpened;
        std::string hostCategory, hostSubCategory, hostCharacter;
        convertCubaseCategoryName(voiceName, category, subCategory, hostCategory, hostSubCategory,
                                  hostCharacter, bank);
        const auto xml = presetMetaInfo(hostCategory, hostSubCategory, hostCharacter);
        const bool saved = save(stream, bank, static_cast<int>(number), xml);
        return saved ? kWritten : kNotWritten;
    });
}

bool VstK2xPresetCreater::save(IBStream* stream, VoiceBank::Bank bank, int number,
                               const std::string& xml)
{
    // A preset file is written field by field and with seeks; in memory that costs no system calls.
    const auto file = owned(new MemoryStream); // untaken: new-throws
    if (!build(file, bank, number, xml))
        return false;
    const auto size = static_cast<int32>(file->getSize());
    // stream is the SDK's FileStream, for which writing too few bytes is a failure.
    if (stream->write(file->getData(), size, nullptr) != kResultOk)
        return false;
    // seek makes the stream write its buffer, and so fails when the disk is full.
    return stream->seek(0, IBStream::kIBSeekSet, nullptr) == kResultOk;
}

bool VstK2xPresetCreater::build(IBStream* stream, VoiceBank::Bank bank, int number,
                                const std::string& xml)
{
    if (!isBank(bank))
        return false;
    if ((bankToPresetType(bank) & kAllUserBanks) == 0)
        return VstK2xPreset::savePreset(stream, kProcessorUID, bank, number, xml.c_str(), -1);
    auto data = userBankData(editorConnect, bank, number);
    if (data.empty() || data.size() > static_cast<size_t>(std::numeric_limits<int32>::max()))
        return false;
    return VstK2xUserBank::saveUserBank(stream, kProcessorUID, bank, number,
                                        static_cast<int>(data.size()), data.data(), xml.c_str(),
                                        -1);
}

void VstK2xPresetCreater::changeNotFileNameLang(std::string& text) noexcept
{
    constexpr std::string_view forbidden = searchNotFilenameLang_ch;
    for (auto& byte : text)
        if (forbidden.find(byte) != std::string_view::npos)
            byte = '_';
}

int VstK2xPresetCreater::searchNotFilenameLang(const std::string& text) noexcept
{
    for (const char byte : std::string_view(searchNotFilenameLang_ch)) {
        const auto position = text.find(byte);
        if (position != std::string::npos)
            return static_cast<int>(position);
    }
    return -1;
}

int VstK2xPresetCreater::replaceString(std::string& text, const std::string& from,
                                       const std::string& to)
{
    const auto position = text.find(from);
    if (position == std::string::npos)
        return 1;
    text.replace(position, from.size(), to);
    return 0;
}

int VstK2xPresetCreater::createPresetDirectoryMac(const std::string& path, FSRef* ref) noexcept
{
    return guarded(1, [&] { return platform::createFolder(path, ref); });
}

int VstK2xPresetCreater::convertCubaseCategoryName(const std::string& voiceName,
                                                   const std::string& category,
                                                   const std::string& subCategory,
                                                   std::string& outCategory,
                                                   std::string& outSubCategory,
                                                   std::string& outCharacter, VoiceBank::Bank bank)
{
    const VSTK2xTvrSynthConverter converter(voiceName, category, subCategory,
                                            isSearchedForWords(bank));
    outCategory = converter.getCategory();
    outSubCategory = converter.getSubCategory();
    outCharacter = converter.getCharacter();
    return 0;
}

} // namespace Vst
} // namespace Steinberg
