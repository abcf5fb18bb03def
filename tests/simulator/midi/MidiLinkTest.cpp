#include "simulator/EchoMemory.h"
#include "simulator/InstanceList.h"
#include "simulator/Voices.h"
#include "tests/simulator/Listeners.h"
#include "tests/simulator/midi/RecordingWire.h"
#include "tests/simulator/ObserverTrace.h"

#include <chrono>
#include <gmock/gmock.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace doubles;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using Texts = std::vector<std::string>;

constexpr uint32 editFlag = 201005000;

/** A parameter of a part and its controller. */
struct Row {
    uint32 id; ///< of part 1
    uint8 controller;
};

const std::vector<Row> table{
    {37012000, 7},  // volume
    {37013000, 10}, // pan
    {37053000, 74}, // cutoff
    {37054000, 71}, // resonance
    {37044000, 73}, // attack
    {37045000, 75}, // decay
    {37047000, 72}, // release
    {37016000, 93}, // chorus send
    {37015000, 91}, // reverb send
};

/** Sustain, assignable functions and knobs, and the edit flag. */
const std::vector<uint32> withoutController{37046000, 19001000, 19002000,
                                            37056000, 37057000, editFlag};

std::string bytes(uint32 first, uint32 second, uint32 third)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%02X %02X %02X", first, second, third);
    return text;
}

/** One instrument at a RecordingWire. */
class SimulatorMidi : public testing::Test {
protected:
    SimulatorMidi()
    : editor(simulator::InstanceList::get().create())
    , user(simulator::InstanceList::get().control(-1))
    , wire(RecordingWire::newest())
    {
    }
    ~SimulatorMidi() override
    {
        for (auto* observer : observers)
            observer->destroy();
        if (editor)
            editor->destroy();
    }

    void watch(uint32 id)
    {
        simulator::ObserverCallbacks callbacks{&trace, id, traceValue, traceBegin, traceEnd};
        observers.push_back(new simulator::EditorObserver(callbacks));
        ASSERT_EQ(0, editor->addObserver(observers.back()));
    }

    VstIEditorConnect* editor;
    SimulatorControl* user;
    RecordingWire* wire;
    std::vector<VstIObserver*> observers;
    Trace trace;
};

TEST_F(SimulatorMidi, HostParameterChangedAndTurnKnobSendTheControllerOnThePartsChannel)
{
    for (const uint32 part : {0U, 9U, 15U})
        for (const auto& row : table) {
            editor->hostParameterChanged(row.id + part, 23 / 127.);
            EXPECT_THAT(wire->take(),
                        ElementsAre("audio " + bytes(0xB0 + part, row.controller, 23)));
            user->turnKnob(row.id + part, 127);
            EXPECT_THAT(wire->take(), ElementsAre(bytes(0xB0 + part, row.controller, 127)));
        }
}

TEST_F(SimulatorMidi, HostParameterChangedAndTurnKnobSendNothingWithoutAController)
{
    for (const uint32 id : withoutController) {
        editor->hostParameterChanged(id, 1.);
        user->turnKnob(id, 1);
    }
    editor->hostParameterChanged(12345, 1.);
    EXPECT_THAT(wire->take(), IsEmpty());
}

TEST_F(SimulatorMidi, ArrivedSetsTheParameterOfEachControllerOnThePartsChannel)
{
    const auto before = user->stateText();
    for (int controller = 0; controller < 128; ++controller)
        if (std::none_of(table.begin(), table.end(),
                         [&](const Row& row) { return row.controller == controller; }))
            wire->arrive({0xB0, static_cast<uint8>(controller), 99});
    EXPECT_EQ(user->stateText(), before) << "no parameter has these controllers";
    EXPECT_FALSE(user->edited());
    for (const uint32 part : {0U, 9U, 15U})
        for (const auto& row : table) {
            wire->arrive({static_cast<uint8>(0xB0 + part), row.controller, 23});
            EXPECT_EQ(user->parameterValue(row.id + part), 23) << row.id + part;
        }
    EXPECT_EQ(user->parameterValue(37012001), 100) << "another part's volume";
    EXPECT_THAT(wire->take(), IsEmpty()) << "sent back to where it came from";
}

TEST_F(SimulatorMidi, ArrivedCallsTheCallbacksOfAControllerAtOnce)
{
    watch(37012002);
    watch(editFlag);
    wire->arrive({0xB2, 7, 90});
    EXPECT_THAT(trace.texts(),
                ElementsAre("begin 37012002", "value 37012002 90", "end 37012002",
                            "begin 201005000", "value 201005000 1", "end 201005000"));
    trace.clear();
    wire->arrive({0xB2, 7, 90}); // the same value
    EXPECT_THAT(trace.texts(), IsEmpty());
    wire->arrive({0xB2, 7, 91}); // the edit flag is set already
    EXPECT_THAT(trace.texts(), ElementsAre("begin 37012002", "value 37012002 91", "end 37012002"));
}

TEST_F(SimulatorMidi, HostParameterChangedSendsAValueOnceAndNotBackToWhereItCameFrom)
{
    editor->hostParameterChanged(37012000, 23 / 127.);
    editor->hostParameterChanged(37012000, 23 / 127.);
    EXPECT_EQ(wire->take().size(), 1U);
    wire->arrive({0xB0, 7, 50});
    editor->hostParameterChanged(37012000, 50 / 127.); // the host sends it back
    EXPECT_THAT(wire->take(), IsEmpty());
    editor->hostParameterChanged(37012000, 23 / 127.);
    EXPECT_THAT(wire->take(), ElementsAre("audio B0 07 17"));
}

TEST_F(SimulatorMidi, HostParameterChangedDoesNotSendALateEcho)
{
    wire->arrive({0xB0, 7, 50});
    wire->arrive({0xB0, 7, 51});
    editor->hostParameterChanged(37012000, 50 / 127.);
    editor->hostParameterChanged(37012000, 51 / 127.);
    EXPECT_THAT(wire->take(), IsEmpty()) << "of the synthesizer";
    user->turnKnobThrough(37013000, {50, 51});
    wire->take();
    editor->hostParameterChanged(37013000, 50 / 127.);
    editor->hostParameterChanged(37013000, 51 / 127.);
    EXPECT_THAT(wire->take(), IsEmpty()) << "of the editor";
}

TEST(SimulatorEchoMemory, ContainsForgetsAValueAfterHalfASecond)
{
    simulator::EchoMemory memory;
    const simulator::EchoMemory::Time begin{std::chrono::hours(1)};
    EXPECT_FALSE(memory.contains(0, begin));
    memory.add(0, begin);
    memory.add(127, begin + std::chrono::milliseconds(400));
    EXPECT_TRUE(memory.contains(0, begin + std::chrono::milliseconds(900)));
    EXPECT_TRUE(memory.contains(127, begin + std::chrono::milliseconds(900)));
    EXPECT_FALSE(memory.contains(63, begin + std::chrono::milliseconds(900)));
    EXPECT_FALSE(memory.contains(127, begin + std::chrono::milliseconds(901)));
    memory.add(1, begin + std::chrono::milliseconds(901));
    EXPECT_TRUE(memory.contains(1, begin + std::chrono::milliseconds(901)));
    EXPECT_FALSE(memory.contains(127, begin + std::chrono::milliseconds(901)));
}

TEST_F(SimulatorMidi, HostParameterChangedSendsAValueAgainThatWasDropped)
{
    wire->isFull = true;
    editor->hostParameterChanged(37012000, 23 / 127.);
    user->turnKnob(37013000, 23);
    wire->isFull = false;
    editor->hostParameterChanged(37012000, 23 / 127.);
    user->turnKnob(37013000, 23);
    EXPECT_THAT(wire->take(), ElementsAre("audio B0 07 17", "B0 0A 17"));
}

TEST_F(SimulatorMidi, TurnKnobThroughSendsEveryValue)
{
    user->turnKnobThrough(37012000, {101, 500, -3});
    EXPECT_THAT(wire->take(), ElementsAre("B0 07 65", "B0 07 7F", "B0 07 00"));
}

TEST_F(SimulatorMidi, ApplyPresetSendsBankSelectProgramChangeAndValues)
{
    editor->syncPartToMidiChannel(4);
    ASSERT_EQ(0, editor->applyPreset(3, 2));
    const auto sent = wire->take();
    ASSERT_GE(sent.size(), 3U);
    EXPECT_EQ(Texts(sent.begin(), sent.begin() + 3), (Texts{"B4 00 00", "B4 20 03", "C4 02"}));
    Texts values;
    for (const auto& row : table)
        values.push_back(
            bytes(0xB4, row.controller, static_cast<uint32>(user->parameterValue(row.id + 4))));
    EXPECT_THAT(sent, IsSupersetOf(values));
    ASSERT_EQ(1, editor->applyPreset(3, 99));
    EXPECT_THAT(wire->take(), IsEmpty()) << "there is no such voice";
}

TEST_F(SimulatorMidi, ArrivedSelectsAVoiceByBankSelectAndProgramChange)
{
    editor->syncPartToMidiChannel(4);
    editor->applyPreset(3, 2);
    const int32 volume = user->parameterValue(37012004);
    const int32 sustain = user->parameterValue(37046004);
    wire->take();

    watch(37046007);
    wire->arrive({0xB7, 0, 0});
    wire->arrive({0xB7, 32, 3});
    wire->arrive({0xC7, 2});
    EXPECT_EQ(user->parameterValue(37012007), volume);
    EXPECT_THAT(
        trace.texts(),
        ElementsAre("begin 37046007", "value 37046007 " + std::to_string(sustain), "end 37046007"));
    EXPECT_THAT(wire->take(), IsEmpty()) << "sent back to where it came from";

    const auto before = user->stateText();
    wire->arrive({0xC7, 99});
    EXPECT_EQ(user->stateText(), before) << "there is no such voice";
}

TEST_F(SimulatorMidi, ReceiveHostMidiAndArrivedPassNotesOn)
{
    ListeningEffect effect;
    editor->setEffectInterface(&effect);
    const std::vector<std::vector<uint8>> notes{{0x95, 60, 1}, {0x95, 60, 0}, {0x85, 60, 64}};
    for (size_t index = 0; index < notes.size(); ++index) {
        editor->receiveHostMidi(notes[index].data(), 3);
        wire->arrive(notes[index]);
        EXPECT_THAT(effect.written[index], testing::ElementsAreArray(notes[index]));
    }
    EXPECT_THAT(wire->take(), ElementsAre("audio 95 3C 01", "audio 95 3C 00", "audio 85 3C 40"));

    const uint8 controller[] = {0xB0, 7, 1};
    editor->receiveHostMidi(controller, 3);
    EXPECT_THAT(wire->take(), IsEmpty());
    editor->setEffectInterface(nullptr);
    wire->arrive({0x95, 60, 1});
    EXPECT_EQ(effect.count, 3U);
}

TEST_F(SimulatorMidi, InstrumentIsBackSendsTheWholeSound)
{
    editor->syncPartToMidiChannel(4);
    editor->applyPreset(3, 2);
    user->turnKnob(37012015, 5);
    wire->take();
    wire->receiver.instrumentIsBack();
    const auto sent = wire->take();
    EXPECT_EQ(sent.size(), 3 + 16 * table.size());
    EXPECT_THAT(sent, IsSupersetOf({"B4 20 03", "C4 02", "BF 07 05", "B0 0A 40"}));
}

TEST_F(SimulatorMidi, SetStateChunkSendsTheValuesAndTheVoiceOfItsPart)
{
    editor->syncPartToMidiChannel(4);
    editor->applyPreset(3, 2);
    user->turnKnob(37012004, 5);
    const auto state = editor->getStateChunk();
    wire->receiver.instrumentIsBack(); // the other end has all values
    editor->syncPartToMidiChannel(0);
    editor->applyPreset(3, 1);
    user->turnKnob(37012015, 6);
    wire->take();
    editor->setStateChunk(state.data(), static_cast<int32>(state.size()));
    const auto sent = wire->take();
    ASSERT_GE(sent.size(), 3U);
    EXPECT_EQ(Texts(sent.begin(), sent.begin() + 3), (Texts{"B4 00 00", "B4 20 03", "C4 02"}));
    EXPECT_THAT(sent, IsSupersetOf({"B0 07 64", "BF 07 64"})) << "values that had changed";
    EXPECT_THAT(sent, testing::Not(testing::Contains("B4 07 05"))) << "a value that is there";
    EXPECT_THAT(sent, testing::Not(testing::Contains("C0 02"))) << "a part without this voice";
}

TEST_F(SimulatorMidi, ChooseProgramSendsAProgramChange)
{
    EXPECT_TRUE(user->chooseProgram(9, 127));
    EXPECT_THAT(wire->take(), ElementsAre("C9 7F"));
    for (const auto& [part, program] : {std::pair{-1, 0}, {16, 0}, {0, -1}, {0, 128}})
        EXPECT_FALSE(user->chooseProgram(part, program));
    EXPECT_THAT(wire->take(), IsEmpty());
}

TEST_F(SimulatorMidi, RemoveObserverSetEffectInterfaceAndDestroyWaitForTheReceiver)
{
    watch(37012000);
    const int before = wire->waits;
    editor->removeObserver(observers[0]);
    EXPECT_EQ(wire->waits, before + 1);
    editor->setEffectInterface(nullptr);
    EXPECT_EQ(wire->waits, before + 2);
    editor->destroy();
    editor = nullptr;
    // The wire is destroyed with the instrument, which no observer holds any more.
    EXPECT_EQ(RecordingWire::newest(), nullptr);
}

TEST_F(SimulatorMidi, ChooseMidiPortMovesToThePortOfThatName)
{
    ListeningController controller;
    ListeningController::MidiPorts ports{{"Organ", "id-1"}, {"Attic", "id-2"}};
    controller.midiPorts = &ports;
    editor->setControllerInterface(&controller);
    user->chooseMidiPort("id-2");
    user->chooseMidiPort("no such ID");
    EXPECT_THAT(wire->chosen, ElementsAre("Attic", ""));
    editor->setControllerInterface(nullptr);
}

} // namespace
