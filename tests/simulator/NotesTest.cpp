#include "tests/realtime/AllocationCount.h"
#include "tests/simulator/SimulatorFixture.h"

#include <tuple>

namespace {

using namespace doubles;
using Message = std::array<uint8, 3>;

class SimulatorNotes : public SimulatorTest {
protected:
    SimulatorNotes() { editor->setEffectInterface(&effect); }

    void send(const Message& message) { editor->receiveHostMidi(message.data(), 3); }

    ListeningEffect effect;
};

TEST_F(SimulatorNotes, ReceiveHostMidiCountsNotesAndSendsThemBackBeforeItReturns)
{
    for (const Message& message : {Message{0x90, 60, 127},
                                   {0x90, 64, 1},
                                   {0x90, 60, 0},
                                   {0x80, 64, 0},
                                   {0x9F, 0, 127},
                                   {0x83, 127, 0}}) {
        const size_t before = effect.count;
        send(message);
        ASSERT_EQ(before + 1, effect.count);
        EXPECT_EQ(message, effect.written[before]);
    }
    for (const auto& [channel, ons, offs] : {std::tuple{0, 2u, 2u},
                                             {15, 1u, 0u},
                                             {3, 0u, 1u},
                                             {7, 0u, 0u},
                                             {-1, 0u, 0u},
                                             {16, 0u, 0u}}) {
        EXPECT_EQ(ons, user->noteOnsReceived(channel)) << channel;
        EXPECT_EQ(offs, user->noteOffsReceived(channel)) << channel;
    }
}

TEST_F(SimulatorNotes, ReceiveHostMidiCountsAndDropsWhatIsNoNote)
{
    for (const Message& message :
         {Message{0, 0, 0}, {0xB0, 7, 100}, {0x90, 200, 127}, {0x90, 60, 128}})
        send(message);
    const Message note{0x90, 60, 127};
    for (const int32 length : {0, 2, 4, -1, INT32_MAX, INT32_MIN})
        editor->receiveHostMidi(note.data(), length);
    editor->receiveHostMidi(nullptr, 3);
    EXPECT_EQ(0u, effect.count);
    EXPECT_EQ(11u, user->otherMidiReceived());
    EXPECT_EQ(0u, user->noteOnsReceived(0));
    editor->setEffectInterface(nullptr);
    send(note);
    EXPECT_EQ(0u, effect.count);
    EXPECT_EQ(1u, user->noteOnsReceived(0)) << "counted without a processor as well";
}

TEST_F(SimulatorNotes, ReceiveHostMidiAndHostParameterChangedAllocateNothing)
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
