#include "controller/ValueTexts.h"

namespace Steinberg {
namespace Vst {

namespace {

/** A host shows 127 units of UTF-16, which come from 381 bytes of UTF-8 at most. */
constexpr size_t kMaxShownBytes = 512;

constexpr size_t kUsualBytes = 4;

} // namespace

void ValueTexts::reserve(size_t count)
{
    bytes.reserve(count * kUsualBytes);
    ends.reserve(count);
}

void ValueTexts::add(std::string_view text)
{
    text = text.substr(0, kMaxShownBytes);
    bytes.insert(bytes.end(), text.begin(), text.end());
    ends.push_back(static_cast<uint32>(bytes.size()));
}

std::string_view ValueTexts::at(int64 index) const
{
    if (index < 0 || index >= static_cast<int64>(ends.size()))
        return {};
    const auto place = static_cast<size_t>(index);
    const size_t begin = place == 0 ? 0 : ends[place - 1];
    return {bytes.data() + begin, ends[place] - begin};
}

} // namespace Vst
} // namespace Steinberg
