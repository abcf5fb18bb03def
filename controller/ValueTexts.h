// ValueTexts: the texts that the editor shows for the values of a parameter.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <atomic>
#include <string_view>
#include <vector>

namespace Steinberg {
namespace Vst {

/** The texts of consecutive values in one block of memory: an instance has 29,000 of them, most of
    three bytes, and a std::string for each would take ten times as much.

    Several parameters can share the complete texts, each by an IPtr. [add and reserve: one thread;
    everything else: any thread] */
class ValueTexts {
public:
    ValueTexts() = default;
    ValueTexts(const ValueTexts&) = delete;
    ValueTexts& operator=(const ValueTexts&) = delete;

    // References, as IPtr counts them.
    void addRef() const noexcept { ++references; }
    void release() const noexcept
    {
        if (--references == 0)
            delete this; // untaken: compiler
    }

    /** Allocates memory for count texts of usual length. */
    void reserve(size_t count);

    /** Adds the next value's text, of which at most kMaxShownBytes are kept. Inline because an
        instance makes 29,000 calls when it starts. */
    void add(std::string_view text)
    {
        text = text.substr(0, kMaxShownBytes);
        const size_t begin = ends.empty() ? 0 : ends.back();
        const size_t end = begin + text.size();
        if (end > bytes.size())
            bytes.resize(end + bytes.size());
        text.copy(bytes.data() + begin, text.size());
        ends.push_back(static_cast<uint32>(end));
    }

    /** @return the text at index, borrowed until the next add; empty when there is none */
    std::string_view at(int64 index) const;

    size_t size() const { return ends.size(); }

    /** Whether both hold the same texts at the same indexes. */
    bool isSame(const ValueTexts& other) const;

private:
    /** More than a host can show: 127 units of UTF-16 are at most 381 bytes of UTF-8. */
    static constexpr size_t kMaxShownBytes = 512;

    std::vector<char> bytes;  ///< the texts, then unused memory
    std::vector<uint32> ends; ///< where each text ends in bytes
    mutable std::atomic<uint32> references{1};
};

} // namespace Vst
} // namespace Steinberg
