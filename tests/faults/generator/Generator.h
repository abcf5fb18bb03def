// The entry of the generator's file.
#pragma once

#include "presets/VstK2xPresetCreater.h"

using Voices = std::map<unsigned, std::map<unsigned, std::string>>;

extern "C" {

/** Writes all voices but the excluded into the user's folder; files that stand stay. */
__attribute__((visibility("default"))) void writeVoices(Steinberg::Vst::VstIEditorConnect& library,
                                                        Voices& voices,
                                                        const std::vector<const char*>& excluded);

/** Writes the voice 5 of a bank as "Grand" into the folder, unless it stands there.
    @return what the generator says of it */
__attribute__((visibility("default"))) int writeVoice(Steinberg::Vst::VstIEditorConnect& library,
                                                      const std::string& folder, int bank);
}
