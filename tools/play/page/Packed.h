// Packed: many small numbers as text for a script.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** Numbers one after the other, small ones in few bytes: seven bits a byte, the lowest first, with
    the highest bit set in all but the last byte. */
class Packed {
public:
    /** @param number 0 to 2^53 - 1, which is what a script's numbers hold */
    void add(int64 number);

    /** Any number of at most 52 bits: twice the number, or twice its distance below -0.5. */
    void addSigned(int64 number);

    /** All numbers, in base 64. */
    std::string text() const;

private:
    std::vector<uint8> bytes;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
