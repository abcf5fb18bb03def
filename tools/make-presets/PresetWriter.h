// PresetWriter: writes voices into the preset folder.
#pragma once

#include "tools/common/VoiceWalk.h"
#include "tools/make-presets/PresetFolder.h"

#include <set>
#include <string>

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

namespace makepresets {

enum class Outcome {
    written, ///< or would be, in a run that writes nothing
    skipped, ///< its file stands already
    excluded,
    failed,
};

struct Result {
    Outcome outcome;
    std::string fileName;  ///< without folder and extension
    std::string reason;    ///< of a failure, without a full stop
    bool replaced = false; ///< written over an earlier voice of this run
    bool hopeless = false; ///< a failure that every other file would meet too
};

class PresetWriter {
public:
    /** @param library, folder outlive this object
        @param excluded file names to leave out */
    PresetWriter(VstIEditorConnect& library, const PresetFolder& folder,
                 std::set<std::string> excluded, bool overwrite, bool dryRun);

    Result write(const tools::Voice& voice);

private:
    Result save(const tools::Voice& voice, const std::string& fileName,
                const std::string& voiceName, const std::string& category,
                const std::string& subCategory);
    std::string refusal(const tools::Voice& voice, int result, int error);
    bool isEmptyUserBank(const tools::Voice& voice);

    VstIEditorConnect& library;
    VstK2xPresetCreater creater;
    const PresetFolder& folder;
    const std::set<std::string> excluded;
    const bool overwrite;
    const bool dryRun;
    std::set<std::string> names; ///< written in this run
};

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
