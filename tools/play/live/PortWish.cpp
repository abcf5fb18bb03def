#include "tools/play/live/PortWish.h"

#include <cstdlib>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {
constexpr const char* kVariable = "SIMULATOR_MIDI_PORT";
}

PortWish::PortWish(bool isLive, const std::string& port)
: isSet(isLive)
{
    if (!isLive)
        return;
    const char* present = std::getenv(kVariable);
    if (!port.empty())
        setenv(kVariable, port.c_str(), 1);
    else if (!present || !*present)
        setenv(kVariable, "first", 1);
}

void PortWish::end()
{
    if (isSet)
        unsetenv(kVariable);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
