#include "tests/realtime/AllocationCount.h"
#include "tests/simulator/SimulatorFixture.h"

namespace {

using namespace doubles;
using Message = std::array<uint8, 3>;

class SimulatorNotes : public SimulatorTest {
protected:
    SimulatorNotes() { editor->setEffectInterface(&effect); }

    void send(const Message& message) { editor->receiveHostMidi(message.data(), 3); }

    ListeningEffect effect;
};

TEST_F(SimulatorNotes, ComeBackUnchangedBeforeTheCallReturns)
{
    const std::vector<Message> messages{
        {0x90, 60, 127}, {0x80, 60, 0}, {0x9F, 0, 127}, {0x9F, 0, 0}, {0x83, 127, 0}};
    size_t expected = 0;
    for (const auto& message : messages) {
        send(message);
        ASSERT_EQ(++expected, effect.count);
        EXPECT_EQ(message, effect.written[expected - 1]);
    }
}

TEST_F(SimulatorNotes, AreCountedByChannel)
{
    send({0x90, 60, 127});
    send({0x90, 64, 127});
    send({0x90, 60, 0});
    send({0x80, 64, 0});
    send({0x9F, 1, 1});
    EXPECT_EQ(2u, user->noteOnsReceived(0));
    EXPECT_EQ(2u, user->noteOffsReceived(0));
    EXPECT_EQ(1u, user->noteOnsReceived(15));
    EXPECT_EQ(0u, user->noteOnsReceived(7));
    EXPECT_EQ(0u, user->noteOnsReceived(-1));
    EXPECT_EQ(0u, user->noteOffsReceived(16));
}

TEST_F(SimulatorNotes, AreAllThatIsSentOn)
{
    send({0, 0, 0});
    send({0xB0, 7, 100});
    send({0x90, 200, 127}); // no MIDI data byte
    send({0x90, 60, 128});
    EXPECT_EQ(0u, effect.count);
    EXPECT_EQ(4u, user->otherMidiReceived());
    EXPECT_EQ(0u, user->noteOnsReceived(0));
}

TEST_F(SimulatorNotes, OfAnotherLengthAreDropped)
{
    const Message note{0x90, 60, 127};
    for (const int32 length : {0, 2, 4, -1, INT32_MAX, INT32_MIN})
        editor->receiveHostMidi(note.data(), length);
    editor->receiveHostMidi(nullptr, 3);
    EXPECT_EQ(0u, effect.count);
    EXPECT_EQ(7u, user->otherMidiReceived());
}

TEST_F(SimulatorNotes, AreCountedWithoutAProcessorToo)
{
    editor->setEffectInterface(nullptr);
    send({0x90, 60, 127});
    EXPECT_EQ(0u, effect.count);
    EXPECT_EQ(1u, user->noteOnsReceived(0));
}

TEST_F(SimulatorNotes, AndAutomationAllocateNothing)
{
    const size_t atStart = allocationCount();
    ASSERT_FALSE(editor->getStateChunk().empty());
    ASSERT_GT(allocationCount(), atStart) << "the library's allocations are not counted";

    const size_t before = allocationCount();
    for (int round = 0; round < 100; ++round) {
        send({0x90, 60, 127});
        send({0, 0, 0});
        editor->hostParameterChanged(volume1, round / 100.);
        editor->hostParameterChanged(12345, 1.);
    }
    EXPECT_EQ(before, allocationCount());
    EXPECT_EQ(100u, effect.count);
    EXPECT_EQ(200u, user->automationReceived());
}

} // namespace
