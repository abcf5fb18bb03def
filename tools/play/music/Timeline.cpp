#include "tools/play/music/Timeline.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {
namespace play {

Timeline::Timeline(int64 blocks)
: spanLength(std::max<int64>((blocks + kSpans - 1) / kSpans, 1))
, all(static_cast<size_t>((blocks + spanLength - 1) / spanLength))
{
}

void Timeline::add(const Block& block)
{
    if (all.empty())
        return;
    if (all[current].blocks == spanLength && current + 1 < all.size())
        ++current;
    auto& span = all[current];
    ++span.blocks;
    span.seconds += block.seconds;
    span.longest = std::max(span.longest, block.seconds);
    span.sent += block.sent;
    span.left += block.left;
    span.mostSent = std::max(span.mostSent, block.sent);
    span.mostLeft = std::max(span.mostLeft, block.left);
}

int64 Timeline::longestQueue() const
{
    int64 longest = 0;
    for (const auto& span : all)
        longest = std::max(longest, span.mostLeft);
    return longest;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
