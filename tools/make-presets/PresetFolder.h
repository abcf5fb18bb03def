// PresetFolder: the folder of preset files, and a hidden folder in it for unfinished ones.
#pragma once

#include "presets/VstK2xPresetCreater.h"

#include <string>

namespace Steinberg {
namespace Vst {
namespace makepresets {

/** A file is written into the hidden folder, and moved when it is whole: whatever ends the program
    leaves no half preset behind. */
class PresetFolder {
public:
    /** @param make false to only look, for a run that writes nothing
        @throws Failure when there is no such folder or it cannot be written to */
    PresetFolder(VstK2xPresetCreater::OutputDir dir, bool make);
    ~PresetFolder();
    PresetFolder(const PresetFolder&) = delete;
    PresetFolder& operator=(const PresetFolder&) = delete;

    const std::string& path() const { return folder; }
    /** Where files are written first. */
    const std::string& staging() const { return stagingFolder; }

    /** Whether there is something under the final name. fileName has no folder and no extension. */
    bool has(const std::string& fileName) const;
    /** Whether the staged file is a preset file to its end: a full disk may show only when the file
        is closed. */
    bool isWhole(const std::string& fileName) const;
    /** Gives the staged file its final name, over a file that is there. @return 0, or an errno
        value */
    int publish(const std::string& fileName) const;
    void discard(const std::string& fileName) const;

private:
    std::string folder;
    std::string stagingFolder;
};

} // namespace makepresets
} // namespace Vst
} // namespace Steinberg
