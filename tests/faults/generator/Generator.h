// The functions of the generator's library.
#pragma once

#include "presets/VstK2xPresetCreater.h"

using Voices = std::map<unsigned, std::map<unsigned, std::string>>;

extern "C" {

/** Writes all voices but the excluded into the user's folder. Existing files are kept. */
__attribute__((visibility("default"))) void writeVoices(Steinberg::Vst::VstIEditorConnect& library,
                                                        Voices& voices,
                                                        const std::vector<const char*>& excluded);

/** Writes voice 5 of a bank as "Grand" into the folder, unless that file exists.
    @return createPresetFile's result */
__attribute__((visibility("default"))) int writeVoice(Steinberg::Vst::VstIEditorConnect& library,
                                                      const std::string& folder, int bank);
}
