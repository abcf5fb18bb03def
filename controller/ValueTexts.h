// ValueTexts: what the editor shows for each value of a parameter.
#pragma once

#include "pluginterfaces/base/ftypes.h"

#include <atomic>
#include <string_view>
#include <vector>

namespace Steinberg {
namespace Vst {

/** The texts of consecutive values, packed into one piece of memory: an instance has 29,000 of
    them, most of three bytes, and a string object each would take ten times as much.

    Once they are complete, parameters that show the same texts hold them together, each by an IPtr.
    [add and reserve: one thread, everything else: any] */
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
            delete this;
    }

    /** Room for count texts of usual length. */
    void reserve(size_t count);

    /** Adds the next value's text. Of a text that is longer than any host shows, the part that is
        shown is kept. Inline, since an instance begins with 29,000 calls. */
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

    /** @return the text at index, borrowed until the next add; empty where there is none */
    std::string_view at(int64 index) const;

    size_t size() const { return ends.size(); }

    /** Whether both have the same texts, as far as they are kept, under the same indexes. */
    bool isSame(const ValueTexts& other) const;

private:
    /** A host shows 127 units of UTF-16, which come from 381 bytes of UTF-8 at most. */
    static constexpr size_t kMaxShownBytes = 512;

    std::vector<char> bytes;  ///< the texts, and room for more behind them
    std::vector<uint32> ends; ///< one past each text's last byte
    mutable std::atomic<uint32> references{1};
};

} // namespace Vst
} // namespace Steinberg
