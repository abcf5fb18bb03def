// ValueTexts: what the editor shows for each value of a parameter.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <string_view>
#include <vector>

namespace Steinberg {
namespace Vst {

/** The texts of consecutive values, packed into one piece of memory: an instance has 29,000 of
    them, most of three bytes, and a string object each would take ten times as much. */
class ValueTexts {
public:
    /** Room for count texts of usual length. */
    void reserve(size_t count);

    /** Adds the next value's text. Of a text that is longer than any host shows, the part that is
        shown is kept. */
    void add(std::string_view text);

    /** @return the text at index, borrowed until the next add; empty where there is none */
    std::string_view at(int64 index) const;

private:
    std::vector<char> bytes;
    std::vector<uint32> ends; ///< one past each text's last byte
};

} // namespace Vst
} // namespace Steinberg
