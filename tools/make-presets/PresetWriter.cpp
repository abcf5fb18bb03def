#include "tools/make-presets/PresetWriter.h"

#include "basics/CallGuard.h"
#include "editorlib/VstIEditorConnect.h"
#include "presets/VoiceText.h"

#include <cerrno>
#include <cstring>

namespace Steinberg {
namespace Vst {
namespace makepresets {

namespace {

Result failure(const std::string& fileName, const std::string& reason, int error = 0)
{
    const bool hopeless = error == ENOSPC || error == EDQUOT || error == EROFS;
    return {Outcome::failed, fileName, reason, false, hopeless};
}

} // namespace

PresetWriter::PresetWriter(VstIEditorConnect& connect, const PresetFolder& presets,
                           std::set<std::string> excludedNames, bool overwriting, bool onlyTrying)
: library(connect)
, creater(connect)
, folder(presets)
, excluded(std::move(excludedNames))
, overwrite(overwriting)
, dryRun(onlyTrying)
{
}

Result PresetWriter::write(const tools::Voice& voice)
{
    std::string fileName, voiceName, category, subCategory;
    if (creater.separationVoiceData(voice.text, fileName, voiceName, category, subCategory) != 0)
        return failure(fileName, categoryCodeOf(voice.text)
                                     ? "the editor library does not know its category"
                                     : "its category code is no number");
    if (excluded.count(fileName) != 0)
        return {Outcome::excluded, fileName, {}};
    const bool again = names.count(fileName) != 0;
    if (!overwrite && (again || folder.has(fileName)))
        return {Outcome::skipped, fileName, {}};
    auto result = dryRun ? Result{Outcome::written, fileName, {}}
                         : save(voice, fileName, voiceName, category, subCategory);
    if (result.outcome == Outcome::written) {
        result.replaced = again;
        names.insert(fileName);
    }
    return result;
}

Result PresetWriter::save(const tools::Voice& voice, const std::string& fileName,
                          const std::string& voiceName, const std::string& category,
                          const std::string& subCategory)
{
    errno = 0;
    const int result = creater.createPresetFile(
        folder.staging(), voiceName, fileName, category, subCategory, voice.bank,
        static_cast<unsigned>(voice.number), nullptr, true, false);
    int error = errno;
    if (result == VstK2xPresetCreater::kWritten && folder.isWhole(fileName)) {
        error = folder.publish(fileName);
        if (error == 0)
            return {Outcome::written, fileName, {}};
    }
    folder.discard(fileName);
    return failure(fileName, refusal(voice, result, error), error);
}

std::string PresetWriter::refusal(const tools::Voice& voice, int result, int error)
{
    if (result == VstK2xPresetCreater::kNotWritten && isEmptyUserBank(voice))
        return "the editor library has no data for it";
    if (error != 0)
        return std::string("its file cannot be written: ") + std::strerror(error);
    return "its file could not be written in full";
}

bool PresetWriter::isEmptyUserBank(const tools::Voice& voice)
{
    const auto type = VstK2xPresetCreater::bankToPresetType(voice.bank);
    return (type & VstK2xPresetCreater::kAllUserBanks) != 0 &&
           guarded(true, [&] { return library.getUserBankData(voice.bank, voice.number).empty(); });
}

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
