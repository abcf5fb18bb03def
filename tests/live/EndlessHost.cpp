// A host that ends without letting its instrument go: with a note that sounds at the port. It plays
// one more when its instrument's port is closed: before the system's MIDI libraries end.
#include "tests/simulator/LoadedSimulator.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace {

Steinberg::Vst::VstIEditorConnect* editor = nullptr;

void play(Steinberg::uint8 pitch)
{
    const Steinberg::uint8 note[] = {0x92, pitch, 127};
    editor->receiveHostMidi(note, 3);
}

} // namespace

int main()
{
    using State = Steinberg::Vst::SimulatorControl::MidiPort::State;
    // First, so that exit comes to it after everything that the instrument brought along.
    if (std::atexit([] { play(61); }) != 0)
        return 2;
    auto* library = new doubles::LoadedSimulator;
    library->connect(&editor);
    auto* user = library->control(-1);
    while (user->midiPort().state == State::opening)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    play(60);
    while (user->midiPort().waiting > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::exit(user->midiPort().notesLeft == 1 ? 0 : 1);
}
