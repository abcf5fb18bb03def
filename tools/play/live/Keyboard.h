// Keyboard: what a MIDI keyboard plays, for the host's MIDI input.
#pragma once

#include "tools/play/music/Song.h"

#include <memory>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Notes alone: this plug-in's host has no other way to send it MIDI. */
class Keyboard {
public:
    /** @param which a MIDI port of the machine's, as SIMULATOR_MIDI_PORT names one; "own" for a
        port that keyboards can be connected to
        @throws Failure when it cannot be opened, or play was built without RtMidi */
    explicit Keyboard(const std::string& which);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    const std::string& name() const { return portName; }

    /** The next note that was played and not asked for yet; its pulse means nothing.
        @return false when there is none */
    bool next(NoteEvent& note);

private:
    struct Port;
    std::unique_ptr<Port> port;
    std::string portName;
};

/** The MIDI ports of the machine that take messages; none where the machine has no MIDI. */
std::vector<std::string> machineMidiOutputs();

} // namespace play
} // namespace Vst
} // namespace Steinberg
