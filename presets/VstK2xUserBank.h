// VstK2xUserBank: a preset file that holds a whole user bank of the instrument.
#pragma once

#include "presets/PresetChunkFile.h"

#include <vector>

namespace Steinberg {
namespace Vst {

/** Controller state, 16 + size bytes:

    | offset | field  | value                                     |
    |--------|--------|-------------------------------------------|
    | 0      | marker | 2                                         |
    | 4      | bank   | a VoiceBank::Bank value                   |
    | 8      | number | the number that the caller gives the bank |
    | 12     | size   | how many bytes follow, at least 1         |
    | 16     | data   | the bank as the editor library gave it    |

    No static operation throws: a stream that throws counts as one that failed. [any thread; one at
    a time for each stream] */
class VstK2xUserBank : public PresetChunkFile {
public:
    /** @param target the file to write or the controller state to read; held by a reference */
    explicit VstK2xUserBank(IBStream* target);

    /** Writes a whole preset file from the stream's start.
        @param classID the processor's class ID, by which hosts find the preset
        @param data size bytes, borrowed for the call and not changed
        @param xml meta information as UTF-8; null for none
        @param xmlSize in bytes; -1 when xml is zero-terminated
        @return false when there is no data (the header is written all the same), and when
        VstK2xPreset::savePreset gives false */
    static bool saveUserBank(IBStream* stream, const FUID& classID, int bank, int number, int size,
                             void* data, const char* xml, int xmlSize) noexcept;

    /** Writes the empty component state; the arguments are not used. Always true. */
    bool storeComponentUserBankData(int bank, int number, int size, void* data);
    /** Writes the controller state. @return false, having written nothing, when there is no data */
    bool storeEditControllerUserBankData(int bank, int number, int size, void* data);

    /** Reads a controller state from the stream's position.
        @param classID not used: the marker tells what it is
        @param[out] bank, number -1 for a field that the stream does not have
        @param[out] size 0 when the stream does not have it
        @param[out] data on success size bytes, with zeros for those that the stream does not have
        @return false when the stream is null or holds no user bank, and for a size that is below 1
        or too large for memory */
    static bool loadUserBank(IBStream* stream, const FUID& classID, int& bank, int& number,
                             int& size, std::vector<char>& data) noexcept;
    bool restoreEditControllerUserBankData(int& bank, int& number, int& size,
                                           std::vector<char>& data);

    /** Whether there is a user bank at the stream's position, which does not move. */
    static bool isK2xUserBank(IBStream* stream) noexcept;
};

} // namespace Vst
} // namespace Steinberg
