#include "simulator/port/PortWire.h"

#include "tests/realtime/AllocationCount.h"
#include "tests/simulator/midi/ScriptedPort.h"

#include <chrono>
#include <future>
#include <gmock/gmock.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::simulator;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using State = SimulatorControl::MidiPort::State;

/** How long to wait before a test fails: longer than a loaded machine needs. */
constexpr auto patience = 20s;

template <typename Condition>
bool waitFor(Condition&& condition)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

MidiMessage numbered(int number)
{
    return MidiMessage::controllerChange(number / 16384, static_cast<uint8>(number / 128 % 128),
                                         number % 128);
}

MidiMessage noteOn(int channel, int pitch)
{
    return {{static_cast<uint8>(0x90 + channel), static_cast<uint8>(pitch), 100}, 3};
}

class PortWireTest : public testing::Test {
protected:
    void start() { wire = std::make_unique<PortWire>(port.driver(), "organ", receiver); }
    void open()
    {
        start();
        waitForState(State::open);
    }
    void waitForState(State state)
    {
        ASSERT_TRUE(waitFor([&] { return wire->port().state == state; }));
    }
    void waitUntilSent()
    {
        ASSERT_TRUE(waitFor([&] { return wire->port().waiting == 0; }));
    }

    const std::shared_ptr<ScriptedPort> shared = std::make_shared<ScriptedPort>();
    ScriptedPort& port = *shared;
    RecordingReceiver receiver;
    std::unique_ptr<PortWire> wire;
};

TEST_F(PortWireTest, SendAndArriveWakeTheThreadForEachMessage)
{
    open();
    const auto begin = std::chrono::steady_clock::now();
    constexpr size_t rounds = 40;
    for (size_t round = 1; round <= rounds; ++round) {
        wire->sendFromAudioThread(numbered(static_cast<int>(round)));
        waitUntilSent();
        port.arrive(numbered(static_cast<int>(round)));
        ASSERT_TRUE(waitFor([&] { return receiver.count() == round; }));
    }
    // A thread that nobody wakes looks around four times a second.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}

TEST_F(PortWireTest, SendKeepsTheOrderOfEachThreadWhenSeveralSendAtOnce)
{
    start();
    constexpr int each = 2000;
    std::thread audio([&] {
        for (int number = 0; number < each; ++number)
            wire->sendFromAudioThread(noteOn(1, number % 128));
    });
    std::vector<std::thread> others;
    for (int channel : {2, 3})
        others.emplace_back([&, channel] {
            for (int number = 0; number < each; ++number)
                wire->send(noteOn(channel, number % 128));
        });
    audio.join();
    for (auto& other : others)
        other.join();
    waitUntilSent();
    std::array<int, 16> next{};
    for (const auto& message : port.sent()) {
        auto& expected = next[message[0] & 0x0FU];
        ASSERT_EQ(message[1], expected % 128) << "of the channel " << (message[0] & 0x0FU);
        ++expected;
    }
    for (size_t channel : {1U, 2U, 3U})
        EXPECT_EQ(next[channel], each);
    EXPECT_EQ(wire->port().left, 3U * each);
    EXPECT_EQ(wire->port().lost, 0U);
}

TEST_F(PortWireTest, SendFromAudioThreadDoesNotWaitForAStuckPortAndAFullQueueEndsAllNotes)
{
    port.isStuck = true;
    open();
    wire->sendFromAudioThread(noteOn(0, 1));
    // The port's thread has taken that message, so the queue is empty.
    ASSERT_TRUE(waitFor([&] { return wire->sendFromAudioThread(noteOn(0, 2)); }));
    int taken = 0;
    const size_t before = doubles::allocationCount();
    while (wire->sendFromAudioThread(noteOn(0, 3)))
        ++taken;
    EXPECT_EQ(doubles::allocationCount(), before);
    EXPECT_GE(taken, 10000);
    EXPECT_GE(wire->port().waiting, 10000U);
    EXPECT_EQ(wire->port().lost, 1U);
    EXPECT_FALSE(wire->sendFromAudioThread(noteOn(0, 4)));
    EXPECT_EQ(wire->port().lost, 2U);
    port.isStuck = false;
    waitUntilSent();
    // A dropped message may have been the end of a note, so all notes are ended.
    ASSERT_TRUE(waitFor([&] {
        const auto sent = port.sent();
        return sent.back() == MidiBytes{0xBF, 123, 0};
    }));
}

TEST_F(PortWireTest, PortTellsWhyNoneIsOpenAndChoosePortOpensOneLater)
{
    port.isMissing = true;
    start();
    waitForState(State::none);
    EXPECT_EQ(wire->port().reason, "there is none called \"organ\"");
    wire->sendFromAudioThread(noteOn(0, 1));
    wire->send(noteOn(0, 2));
    waitUntilSent();
    EXPECT_THAT(port.sent(), IsEmpty());
    EXPECT_EQ(wire->port().lost, 2U);

    port.isMissing = false;
    wire->choosePort("attic");
    waitForState(State::open);
    EXPECT_TRUE(waitFor([&] { return receiver.returns == 1; })) << "the port has no values yet";
}

TEST_F(PortWireTest, ChoosePortEndsNotesAndMovesToTheOtherPort)
{
    open();
    EXPECT_EQ(wire->port().name, "the port organ");
    wire->send(noteOn(0, 60));
    waitUntilSent();
    wire->choosePort("attic");
    ASSERT_TRUE(waitFor([&] { return wire->port().name == "the port attic"; }));
    EXPECT_EQ(port.sent().back(), (MidiBytes{0xB0, 123, 0})) << "the organ plays on";
    EXPECT_TRUE(waitFor([&] { return receiver.returns == 1; })) << "the attic has no values yet";

    wire->choosePort("");
    waitForState(State::none);
    EXPECT_FALSE(port.isOpen);
}

TEST_F(PortWireTest, LookDropsMessagesWhileTheInstrumentIsAwayAndEndsItsNotesWhenItIsBack)
{
    open();
    wire->send(noteOn(2, 60));
    wire->send(noteOn(2, 61));
    wire->send(MidiMessage::endOfNote(2, 61));
    waitUntilSent();
    port.seen = MidiDriver::State::away;
    waitForState(State::away);
    wire->send(MidiMessage::endOfNote(2, 60));
    waitUntilSent();
    EXPECT_EQ(port.sent().size(), 3U);
    EXPECT_EQ(wire->port().lost, 1U);
    EXPECT_EQ(receiver.returns, 0);

    port.seen = MidiDriver::State::there;
    waitForState(State::open);
    EXPECT_TRUE(waitFor([&] { return receiver.returns == 1; }));
    wire->send(noteOn(2, 72));
    waitUntilSent();
    EXPECT_THAT(port.sent(), ElementsAre(noteOn(2, 60).bytes, noteOn(2, 61).bytes,
                                         MidiMessage::endOfNote(2, 61).bytes,
                                         MidiMessage::endOfNote(2, 60).bytes,
                                         MidiBytes{0xB2, 123, 0}, noteOn(2, 72).bytes));
}

TEST_F(PortWireTest, LookClosesAPortThatIsGoneForGood)
{
    open();
    port.seen = MidiDriver::State::gone;
    waitForState(State::none);
    EXPECT_TRUE(waitFor([&] { return !port.isOpen; }));
    wire->send(noteOn(0, 60));
    waitUntilSent();
    EXPECT_EQ(wire->port().lost, 1U);
}

TEST_F(PortWireTest, CloseSendsWhatWaitsAndEndsEveryNoteThatSounds)
{
    start();
    const MidiMessage silentNoteOn{{0x95, 40, 0}, 3}; // ends a note as well
    for (const auto& message : {noteOn(0, 60), noteOn(9, 36), noteOn(9, 38), noteOn(5, 40),
                                MidiMessage::endOfNote(9, 36), silentNoteOn})
        wire->sendFromAudioThread(message);
    wire->close(); // while messages wait
    EXPECT_THAT(port.sent(),
                ElementsAre(noteOn(0, 60).bytes, noteOn(9, 36).bytes, noteOn(9, 38).bytes,
                            noteOn(5, 40).bytes, MidiMessage::endOfNote(9, 36).bytes,
                            silentNoteOn.bytes, MidiMessage::endOfNote(0, 60).bytes,
                            MidiMessage::endOfNote(9, 38).bytes, MidiBytes{0xB0, 123, 0},
                            MidiBytes{0xB9, 123, 0}));
    EXPECT_FALSE(port.isOpen);
    EXPECT_FALSE(wire->send(noteOn(0, 1)));
    EXPECT_FALSE(wire->sendFromAudioThread(noteOn(0, 1)));
    wire->close();
}

TEST_F(PortWireTest, CloseGivesUpASystemThatDoesNotReturn)
{
    port.isStuck = true;
    open();
    wire->send(noteOn(0, 60));
    const auto begin = std::chrono::steady_clock::now();
    wire.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, patience);
    port.isStuck = false;
    EXPECT_TRUE(waitFor([&] { return !port.isOpen; }));
}

TEST_F(PortWireTest, ArrivedGetsABurstInOrderOnAThreadOfItsOwn)
{
    open();
    constexpr int burst = 10000;
    for (int number = 0; number < burst; ++number)
        port.arrive(numbered(number));
    ASSERT_TRUE(waitFor([&] { return receiver.count() == static_cast<size_t>(burst); }));
    EXPECT_EQ(wire->port().arrived, static_cast<uint32>(burst));
    wire->close();
    for (int number = 0; number < burst; ++number) {
        ASSERT_EQ(receiver.messages[static_cast<size_t>(number)], numbered(number).bytes) << number;
        ASSERT_EQ(receiver.threads[static_cast<size_t>(number)], receiver.threads[0]);
    }
    EXPECT_NE(port.thread, std::this_thread::get_id());
    EXPECT_NE(receiver.threads[0], port.thread) << "a slow plug-in would delay the host's notes";
    EXPECT_NE(receiver.threads[0], std::this_thread::get_id());
}

TEST_F(PortWireTest, WaitForReceiverWaitsForTheCallThatIsUnderWay)
{
    std::promise<void> entered;
    std::promise<void> leave;
    auto mayLeave = leave.get_future().share();
    receiver.onArrival = [&] {
        entered.set_value();
        mayLeave.wait();
    };
    open();
    wire->waitForReceiver(); // none is under way
    port.arrive(noteOn(0, 60));
    entered.get_future().wait();
    auto waiting = std::async(std::launch::async, [&] {
        wire->waitForReceiver();
        return receiver.count();
    });
    EXPECT_EQ(waiting.wait_for(50ms), std::future_status::timeout);
    leave.set_value();
    EXPECT_EQ(waiting.get(), 1U);
}

TEST_F(PortWireTest, WaitForReceiverAndCloseReturnAtOnceInsideTheReceiversCall)
{
    std::promise<void> done;
    receiver.onArrival = [&] {
        wire->waitForReceiver();
        wire->close();
        done.set_value();
    };
    open();
    port.arrive(noteOn(0, 60));
    EXPECT_EQ(done.get_future().wait_for(patience), std::future_status::ready);
    ASSERT_TRUE(waitFor([&] { return receiver.count() == 1; }));
}

TEST_F(PortWireTest, CloseEndsTheReceiversCalls)
{
    std::atomic<int> calls{0};
    receiver.onArrival = [&] { ++calls; };
    open();
    std::atomic<bool> isOver{false};
    std::thread system([&] {
        while (!isOver)
            port.arrive(noteOn(0, 60));
    });
    ASSERT_TRUE(waitFor([&] { return calls > 0; }));
    wire->close();
    const int atEnd = calls;
    isOver = true;
    system.join();
    EXPECT_EQ(calls, atEnd);
}

} // namespace
