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

    No static operation throws: a stream that throws counts as one that failed. [any thread; one at
    a time for each stream] */
class VstK2xPreset : public PresetChunkFile {
public:
    /** @param target the file to write or the controller state to read; held by a reference */
    explicit VstK2xPreset(IBStream* target);

    /** Writes a whole preset file from the stream's start.
        @param classID the processor's class ID, by which hosts find the preset
        @param xml meta information as UTF-8; null for none
        @param xmlSize in bytes; -1 when xml is zero-terminated
        @return false when the stream is null or refused the header, the meta information or the
        list of chunks */
    static bool savePreset(IBStream* stream, const FUID& classID, int bank, int number,
                           const char* xml, int xmlSize) noexcept;

    /** Writes the empty component state; the arguments are not used. Always true. */
    bool storeComponentPresetData(int bank, int number);
    /** Writes the controller state. Always true: savePreset sees a failed stream when it writes
        the rest. */
    bool storeEditControllerPresetData(int bank, int number);

    /** Reads a controller state from the stream's position.
        @param classID not used: the marker tells what it is
        @param[out] bank, number -1 for a field that the stream does not have
        @return false when the stream is null or holds no preset */
    static bool loadPreset(IBStream* stream, const FUID& classID, int& bank, int& number) noexcept;
    bool restoreEditControllerPresetData(int& bank, int& number);

    /** Whether there is a preset at the stream's position, which does not move. */
    static bool isK2xPreset(IBStream* stream) noexcept;
};

} // namespace Vst
} // namespace Steinberg
