// A host that exits without destroying its instrument, while a note sounds at the port. In its exit
// handler it plays one more note, when the port must be closed already.
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
    // Registered first, so that it runs after the exit handlers of the libraries loaded below.
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
