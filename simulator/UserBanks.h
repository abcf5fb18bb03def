// UserBanks: the contents of the simulated instrument's user banks.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Banks 8, 9, 10 and 14 with four slots each. A slot has made-up factory data until data is put
    into it. [any thread but the audio thread] */
class UserBanks {
public:
    static constexpr int32 slots = 4;

    using Slot = std::pair<int32, int32>; ///< bank and number

    static bool isUserBank(int32 bank);
    static bool isSlot(int32 bank, int32 number);

    /** A slot's bytes; empty for an unknown slot. */
    std::vector<char> get(int32 bank, int32 number) const;
    /** @return false for an unknown slot, and for empty data */
    bool put(int32 bank, int32 number, std::vector<char> data);
    /** The slots into which data was put. */
    std::map<Slot, std::vector<char>> loaded() const;

private:
    mutable std::mutex mutex;
    std::map<Slot, std::vector<char>> contents;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
