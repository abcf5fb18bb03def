// The records of the port lists that the controller hands to the editor library.
#pragma once

#include <string>

namespace Steinberg {
namespace Vst {

namespace VSTiAudioPort {

/** One host audio input port, as 8-bit text (UTF-8 in a Unicode host). */
struct AudioPortInfo {
    std::string portName; ///< the name that the user sees
    std::string portId;   ///< the host's ID; what the library passes back to setAudioPortList
};

} // namespace VSTiAudioPort

namespace VSTiMidiPort {

/** One host MIDI output port, as 8-bit text (UTF-8 in a Unicode host). */
struct MidiOutPortInfo {
    std::string portName; ///< the name that the user sees
    std::string portId;   ///< the host's ID; what the library passes back to setMidiOutPort
};

} // namespace VSTiMidiPort

} // namespace Vst
} // namespace Steinberg
