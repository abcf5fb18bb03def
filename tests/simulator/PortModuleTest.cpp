#include "tests/simulator/LoadedSimulator.h"
#include "tests/tools/ScratchFolder.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>

namespace {

using namespace Steinberg;
using namespace doubles;
using State = SimulatorControl::MidiPort::State;
using testing::HasSubstr;

TEST(SimulatorPortModule, ConnectWireReportsAMissingModuleAndTheInstrumentWorksWithoutAPort)
{
    const ScratchFolder folder;
    const auto file = folder.file("simulator.dylib");
    std::filesystem::copy_file(SIMULATOR_FILE, file);
    const LoadedSimulator library(file);
    VstIEditorConnect* editor = nullptr;
    setenv("SIMULATOR_MIDI_PORT", "first", 1);
    testing::internal::CaptureStderr();
    library.connect(&editor);
    const auto said = testing::internal::GetCapturedStderr();
    unsetenv("SIMULATOR_MIDI_PORT");

    ASSERT_TRUE(editor);
    EXPECT_THAT(said, HasSubstr("simulator: no MIDI port, its part of this build does not load: "));
    auto* user = library.control(-1);
    EXPECT_EQ(user->midiPort().state, State::none);
    EXPECT_THAT(user->midiPort().reason, HasSubstr("simulator-midi-port"));
    const uint8 note[] = {0x92, 60, 127};
    editor->receiveHostMidi(note, 3);
    EXPECT_EQ(user->noteOnsReceived(2), 1U);
    EXPECT_EQ(user->midiPort().lost, 1U);
    editor->destroy();
}

} // namespace
