#include "tools/play/user/UserTurns.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr double kSecondsBetweenGestures = 2;
constexpr int32 kFirstValue = 16;
constexpr int32 kStep = 37;
constexpr int32 kValues = 128;
} // namespace

void UserTurns::play(double seconds)
{
    if (seconds < due)
        return;
    due += kSecondsBetweenGestures;
    // Never the present value: a knob that does not move makes no event.
    auto value = static_cast<int32>((kFirstValue + kStep * count) % kValues);
    if (value == control.parameterValue(id))
        value = (value + 1) % kValues;
    if (control.turnKnob(id, value))
        ++count;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
