// VstK2xPreset: a preset file that names one voice of the instrument.
#pragma once

#include "presets/PresetChunkFile.h"

namespace Steinberg {
namespace Vst {

/** The sound itself stays in the instrument, so the preset only says which voice it is. Controller
    state, 12 bytes:

    | offset | field  | value                   |
    |--------|--------|-------------------------|
    | 0      | marker | 1                       |
    | 4      | bank   | a VoiceBank::Bank value |
    | 8      | number | the voice in its bank   |

    Nothing here throws; a stream that throws is one that failed. [any thread, one at a time a
    stream] */
class VstK2xPreset : public PresetChunkFile {
public:
    /** @param target file to write or controller state to read; kept with a reference */
    explicit VstK2xPreset(IBStream* target);

    /** Writes a whole preset file from the stream's start.
        @param classID the processor's, which hosts look for
        @param xml meta information, or null for none; xmlSize in bytes, -1 up to the terminator
        @return false when the stream is null or refused the header, the meta information or the
            list of chunks */
    static bool savePreset(IBStream* stream, const FUID& classID, int bank, int number,
                           const char* xml, int xmlSize) noexcept;

    /** Writes the empty component state, the arguments being of no use to it. Always true. */
    bool storeComponentPresetData(int bank, int number);
    /** Writes the controller state. Always true: a stream that failed fails again at the end. */
    bool storeEditControllerPresetData(int bank, int number);

    /** Reads a controller state from the stream's position.
        @param classID not compared: the marker decides
        @param bank, number -1 each unless the stream holds them
        @return false when there is no stream or no preset in it */
    static bool loadPreset(IBStream* stream, const FUID& classID, int& bank, int& number) noexcept;
    bool restoreEditControllerPresetData(int& bank, int& number);

    /** Whether a preset stands at the stream's position, which stays as it was. */
    static bool isK2xPreset(IBStream* stream) noexcept;
};

} // namespace Vst
} // namespace Steinberg
