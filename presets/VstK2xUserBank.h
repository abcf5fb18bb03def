// VstK2xUserBank: a preset file that carries a whole user bank of the instrument.
#pragma once

#include "presets/PresetChunkFile.h"

#include <vector>

namespace Steinberg {
namespace Vst {

/** Controller state, 16 + size bytes:

    | offset | field  | value                                             |
    |--------|--------|---------------------------------------------------|
    | 0      | marker | 2                                                 |
    | 4      | bank   | a VoiceBank::Bank value                           |
    | 8      | number | as the caller numbers the bank                    |
    | 12     | size   | how many bytes follow, at least 1                 |
    | 16     | data   | the bank as the editor library gave it, opaque    |

    Nothing static here throws; a stream that throws is one that failed. [any thread, one at a time
    a stream] */
class VstK2xUserBank : public PresetChunkFile {
public:
    /** @param target file to write or controller state to read; kept with a reference */
    explicit VstK2xUserBank(IBStream* target);

    /** Writes a whole preset file from the stream's start.
        @param classID the processor's, which hosts look for
        @param data size bytes, borrowed for the call and not changed
        @param xml meta information, or null for none; xmlSize in bytes, -1 up to the terminator
        @return false when there is no data (the file's front is written all the same), and where
            VstK2xPreset::savePreset gives false */
    static bool saveUserBank(IBStream* stream, const FUID& classID, int bank, int number, int size,
                             void* data, const char* xml, int xmlSize) noexcept;

    /** Writes the empty component state, the arguments being of no use to it. Always true. */
    bool storeComponentUserBankData(int bank, int number, int size, void* data);
    /** Writes the controller state. @return false, and nothing written, when there is no data */
    bool storeEditControllerUserBankData(int bank, int number, int size, void* data);

    /** Reads a controller state from the stream's position.
        @param classID not compared: the marker decides
        @param bank, number -1 each unless the stream holds them; size likewise 0
        @param data on success size bytes, zeros for those that the stream lacks
        @return false when there is no stream, no user bank in it, a size below 1, or a size that
            memory cannot hold */
    static bool loadUserBank(IBStream* stream, const FUID& classID, int& bank, int& number,
                             int& size, std::vector<char>& data) noexcept;
    bool restoreEditControllerUserBankData(int& bank, int& number, int& size,
                                           std::vector<char>& data);

    /** Whether a user bank stands at the stream's position, which stays as it was. */
    static bool isK2xUserBank(IBStream* stream) noexcept;
};

} // namespace Vst
} // namespace Steinberg
