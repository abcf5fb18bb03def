// SoundState: what the simulated instrument stores in a project, in binary form or as text.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Binary form, 32-bit little-endian integers without padding:
        "RSIM", version 1, voice bank, voice number,
        count of parameters, then ID and value of each,
        count of user banks, then bank, number, size and the bytes of each; nothing after that.
    Text form, one record on each line, bytes in hexadecimal:
        simulator 1 / voice BANK NUMBER / parameter ID VALUE / userbank BANK NUMBER BYTES
    Reading fails as a whole, and then sets nothing, when anything is malformed. */
struct SoundState {
    int32 bank = -1; ///< the voice that was applied last; -1 for none
    int32 number = -1;
    std::vector<std::pair<uint32, int32>> parameters;
    std::map<std::pair<int32, int32>, std::vector<char>> userBanks;

    std::vector<char> toBytes() const;
    /** @param data size bytes; may be null or anything */
    static bool fromBytes(const void* data, int32 size, SoundState& state);

    std::u16string toText() const;
    /** @param text zero-terminated; may be null or anything */
    static bool fromText(const char16* text, SoundState& state);
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
