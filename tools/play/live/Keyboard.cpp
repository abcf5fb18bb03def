#include "tools/play/live/Keyboard.h"

#include "tools/common/Failure.h"

#ifdef PLAY_HAS_RTMIDI
#include "public.sdk/source/vst/utility/ringbuffer.h"
#include "simulator/port/RtMidiDriver.h"
#endif

namespace Steinberg {
namespace Vst {
namespace play {

#ifdef PLAY_HAS_RTMIDI

namespace {
constexpr size_t kCapacity = 4096; ///< messages between two blocks
}

/** The queue is before the driver, whose thread writes to it. */
struct Keyboard::Port {
    OneReaderOneWriter::RingBuffer<simulator::MidiMessage> waiting{kCapacity};
    std::unique_ptr<simulator::MidiDriver> driver =
        simulator::makeRtMidiDriver("play-keyboard", simulator::Directions::in);
};

Keyboard::Keyboard(const std::string& which)
: port(std::make_unique<Port>())
{
    try {
        portName = port->driver->open(
            which, [&queue = port->waiting](const simulator::MidiMessage& message) {
                if (message.isNote())
                    queue.push(message);
            });
    } catch (const simulator::NoMidiPort& reason) {
        throw tools::Failure(std::string("No MIDI keyboard: ") + reason.what() + ".");
    }
}

bool Keyboard::next(NoteEvent& note)
{
    simulator::MidiMessage message;
    if (!port->waiting.pop(message))
        return false;
    note = {0, static_cast<uint8>(message.channel()), message.bytes[1], message.bytes[2],
            message.startsNote()};
    return true;
}

std::vector<std::string> machineMidiOutputs()
{
    std::vector<std::string> names;
    try {
        for (const auto& port : simulator::systemMidiPorts())
            if (port.takes)
                names.push_back(port.name);
    } catch (const simulator::NoMidiPort&) {
        names.clear();
    }
    return names;
}

#else

struct Keyboard::Port {};

Keyboard::Keyboard(const std::string&)
{
    throw tools::Failure("This play was built without RtMidi, and so without MIDI keyboards.");
}

bool Keyboard::next(NoteEvent&)
{
    return false;
}

std::vector<std::string> machineMidiOutputs()
{
    return {};
}

#endif

Keyboard::~Keyboard() = default;

} // namespace play
} // namespace Vst
} // namespace Steinberg
