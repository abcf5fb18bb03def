// A host that ends without letting its instrument go: with a note that sounds at the port.
#include "tests/simulator/LoadedSimulator.h"

#include <cstdlib>
#include <iostream>
#include <thread>

int main()
{
    using State = Steinberg::Vst::SimulatorControl::MidiPort::State;
    auto* library = new doubles::LoadedSimulator;
    Steinberg::Vst::VstIEditorConnect* editor = nullptr;
    library->connect(&editor);
    auto* user = library->control(-1);
    while (user->midiPort().state == State::opening)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const Steinberg::uint8 note[] = {0x92, 60, 127};
    editor->receiveHostMidi(note, 3);
    while (user->midiPort().waiting > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::exit(user->midiPort().notesLeft == 1 ? 0 : 1);
}
