#include "controller/ValueTexts.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {

namespace {

constexpr size_t kUsualBytes = 4;

} // namespace

void ValueTexts::reserve(size_t count)
{
    bytes.resize(count * kUsualBytes);
    ends.reserve(count);
}

std::string_view ValueTexts::at(int64 index) const
{
    if (index < 0 || index >= static_cast<int64>(ends.size()))
        return {};
    const auto place = static_cast<size_t>(index);
    const size_t begin = place == 0 ? 0 : ends[place - 1];
    return {bytes.data() + begin, ends[place] - begin};
}

bool ValueTexts::isSame(const ValueTexts& other) const
{
    // Only the bytes before the last text's end are compared: the rest is unused.
    return ends == other.ends &&
           (ends.empty() ||
            std::equal(bytes.begin(), bytes.begin() + ends.back(), other.bytes.begin()));
}

} // namespace Vst
} // namespace Steinberg
