// The preset generator as a library of its own, so that OwnCode can tell its calls of the system
// from the test program's. The plug-in itself does not write all voices.
#include "tests/faults/generator/Generator.h"

using namespace Steinberg::Vst;

void writeVoices(VstIEditorConnect& library, Voices& voices,
                 const std::vector<const char*>& excluded)
{
    VstK2xPresetCreater creater(library);
    const auto types = static_cast<VstK2xPresetCreater::PresetType>(
        VstK2xPresetCreater::kAllVoiceBanks | VstK2xPresetCreater::kAllUserBanks);
    creater.setVoiceDataInfo(voices, types, VstK2xPresetCreater::kUserFolder, &excluded, false,
                             false);
}

int writeVoice(VstIEditorConnect& library, const std::string& folder, int bank)
{
    VstK2xPresetCreater creater(library);
    return creater.createPresetFile(folder, "Grand", "Grand", "Acoustic Piano", "Acoustic",
                                    static_cast<VoiceBank::Bank>(bank), 5, nullptr, false, false);
}
