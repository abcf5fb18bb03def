// PortWish: which MIDI port the simulated instrument is to open.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Sets SIMULATOR_MIDI_PORT for the one instrument that is to have the port: each looks there when
    it is made. */
class PortWish {
public:
    /** @param isLive else nothing is changed
        @param port as the variable takes it; empty for what the variable says already, and for the
        first port there is when it says nothing */
    PortWish(bool isLive, const std::string& port);
    ~PortWish() { end(); }
    PortWish(const PortWish&) = delete;
    PortWish& operator=(const PortWish&) = delete;

    /** Instruments that are made from now on have no port: a second one would send its values to
        the same synthesizer. */
    void end();

private:
    const bool isSet;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
