// "Midi Out": the library's writeMidi fills a queue, and process empties it.
#include "tests/unit/ProcessorFixture.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <thread>
#include <utility>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessorMidiOut : public unit::ProcessorFixture {
protected:
    void SetUp() override { processor->setActive(true); }

    static std::vector<int> pitches(const std::vector<Event>& events)
    {
        std::vector<int> result;
        result.reserve(events.size());
        for (const auto& event : events)
            result.push_back(event.noteOn.pitch);
        return result;
    }

    std::vector<int> drainedPitches() { return pitches(drained()); }

    void writeNotes(int count)
    {
        for (int note = 0; note < count; ++note)
            writeMidi(0x90, note % 128, 127);
    }
};

TEST_F(ProcessorMidiOut, ProcessGivesANoteOnWithEveryFieldSet)
{
    writeMidi(0x9C, 60, 127);
    const auto events = drained();
    ASSERT_EQ(events.size(), 1u);
    const Event& event = events[0];
    EXPECT_EQ(event.busIndex, 0);
    EXPECT_EQ(event.sampleOffset, 0);
    EXPECT_EQ(event.ppqPosition, 0.0);
    EXPECT_EQ(event.flags, 0);
    EXPECT_EQ(event.type, Event::kNoteOnEvent);
    EXPECT_EQ(event.noteOn.channel, 12);
    EXPECT_EQ(event.noteOn.pitch, 60);
    EXPECT_EQ(event.noteOn.tuning, 0.f);
    EXPECT_EQ(event.noteOn.velocity, 1.f);
    EXPECT_EQ(event.noteOn.length, 0);
    EXPECT_EQ(event.noteOn.noteId, -1);
}

struct Velocity {
    int status;
    int third;
    float velocity;
};

TEST_F(ProcessorMidiOut, ProcessGivesAVelocityToANoteOnOnly)
{
    const Velocity table[] = {{0x90, 0, 0.f},   {0x90, 1, 1.f / 127},     {0x9F, 64, 64.f / 127},
                              {0x90, 127, 1.f}, {0x90, 128, 128.f / 127}, {0x90, 255, 255.f / 127},
                              {0x80, 64, 0.f},  {0x8F, 127, 0.f},         {0xA0, 127, 0.f},
                              {0xB0, 127, 0.f}, {0xC0, 127, 0.f},         {0xD0, 127, 0.f},
                              {0xE0, 127, 0.f}, {0xF0, 127, 0.f},         {0x00, 127, 0.f},
                              {0x10, 127, 0.f}, {0x7F, 127, 0.f}};
    for (const auto& row : table) {
        writeMidi(row.status, 60, row.third);
        const auto events = drained();
        ASSERT_EQ(events.size(), 1u) << row.status;
        EXPECT_EQ(events[0].type, Event::kNoteOnEvent) << row.status;
        EXPECT_EQ(events[0].noteOn.channel, row.status & 0x0F) << row.status;
        EXPECT_EQ(events[0].noteOn.pitch, 60) << row.status;
        EXPECT_FLOAT_EQ(events[0].noteOn.velocity, row.velocity) << row.status << " " << row.third;
    }
}

TEST_F(ProcessorMidiOut, WriteMidiTakesBytesAsUnsigned)
{
    writeMidi(0x90, 255, 127);
    EXPECT_THAT(drainedPitches(), ElementsAre(255));
}

TEST_F(ProcessorMidiOut, WriteMidiTakesThreeBytesOnly)
{
    const unsigned char bytes[] = {0x90, 60, 127, 0};
    for (const int length : {-2147483647 - 1, -3, -1, 0, 1, 2, 4, 5, 2147483647})
        processor->writeMidi(bytes, length);
    processor->writeMidi(nullptr, 3);
    processor->writeMidi(nullptr, 0);
    EXPECT_THAT(drained(), IsEmpty());
}

TEST_F(ProcessorMidiOut, WriteMidiTakesNothingWhileInactive)
{
    processor->setActive(false);
    writeMidi(0x90, 60, 127);
    EXPECT_THAT(drained(), IsEmpty());
    processor->setActive(true);
    EXPECT_THAT(drained(), IsEmpty());
    writeMidi(0x90, 61, 127);
    EXPECT_THAT(drainedPitches(), ElementsAre(61));
}

TEST_F(ProcessorMidiOut, WriteMidiTakesNothingBeforeTheFirstActivation)
{
    processor = owned(new VstK2x);
    writeMidi(0x90, 60, 127);
    processor->setActive(true);
    EXPECT_THAT(drained(), IsEmpty());
}

TEST_F(ProcessorMidiOut, SetActiveTwiceIsAsGoodAsOnce)
{
    EXPECT_EQ(processor->setActive(true), kResultOk);
    writeMidi(0x90, 60, 127);
    EXPECT_EQ(processor->setActive(false), kResultOk);
    EXPECT_EQ(processor->setActive(false), kResultOk);
    writeMidi(0x90, 61, 127);
    EXPECT_THAT(drainedPitches(), ElementsAre(60));
    EXPECT_EQ(processor->setActive(42), kResultOk);
    writeMidi(0x90, 62, 127);
    EXPECT_THAT(drainedPitches(), ElementsAre(62));
}

TEST_F(ProcessorMidiOut, ProcessGivesTheOldestFirstAndOnlyOnce)
{
    writeNotes(3);
    EXPECT_THAT(drainedPitches(), ElementsAre(0, 1, 2));
    EXPECT_THAT(drained(), IsEmpty());
}

TEST_F(ProcessorMidiOut, WriteMidiDropsAllOfAHundredEventsForOneMore)
{
    writeNotes(101);
    EXPECT_THAT(drainedPitches(), ElementsAre(100));
}

TEST_F(ProcessorMidiOut, ProcessKeepsEventsForABlockWithAnEventList)
{
    writeNotes(2);
    unit::Block block;
    block.data.outputEvents = nullptr;
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(drainedPitches(), ElementsAre(0, 1));
}

TEST_F(ProcessorMidiOut, ProcessDropsAnEventThatTheHostRefuses)
{
    writeNotes(5);
    unit::Block block;
    block.out.limit = 3;
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(pitches(block.out.events), ElementsAre(0, 1, 2));
    EXPECT_THAT(drained(), IsEmpty());
}

TEST_F(ProcessorMidiOut, ProcessLosesOneEventToAListThatThrows)
{
    writeNotes(3);
    unit::Block block;
    block.out.throws = true;
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(drainedPitches(), ElementsAre(1, 2));
}

TEST_F(ProcessorMidiOut, ProcessGivesWhatWaitsAfterTheLibraryIsGone)
{
    connect();
    writeNotes(2);
    disconnect();
    EXPECT_THAT(drainedPitches(), ElementsAre(0, 1));
}

TEST_F(ProcessorMidiOut, ProcessGivesWhatWaitsWhileInactive)
{
    writeNotes(2);
    processor->setActive(false);
    EXPECT_THAT(drainedPitches(), ElementsAre(0, 1));
}

TEST_F(ProcessorMidiOut, ProcessGivesWhatTheLibraryWritesMeanwhileWithTheSameBlock)
{
    connect();
    library.onCall = [this](const std::string& text) {
        if (text == "library.receiveHostMidi(90 3C 7F)")
            library.effect->writeMidi("\x90\x3C\x7F", 3);
        if (text == "library.hostParameterChanged(7, 0.5)")
            library.effect->writeMidi("\xB0\x07\x40", 3);
    };
    unit::Block block;
    block.in.add(doubles::noteOn(0, 60, 1));
    block.changes.add(7, {{0, 0.5}});
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(pitches(block.out.events), ElementsAre(7, 60));
}

TEST_F(ProcessorMidiOut, WriteMidiInsideProcessDropsByTheSameRule)
{
    connect();
    library.onCall = [this](const std::string& text) {
        if (text == "library.receiveHostMidi(90 3C 7F)")
            library.effect->writeMidi("\x90\x3C\x7F", 3);
    };
    // 250 notes: dropped at the 101st and at the 201st, so 50 are left.
    unit::Block block;
    for (int note = 0; note < 250; ++note)
        block.in.add(doubles::noteOn(0, 60, 1));
    processor->process(block.data);
    EXPECT_EQ(block.out.events.size(), 50u);
}

/** A host's event list that has the library write during addEvent. */
class AnsweredList : public IEventList {
public:
    explicit AnsweredList(std::function<void()> libraryAnswer)
    : answer(std::move(libraryAnswer))
    {
    }
    std::vector<Event> events;

    int32 PLUGIN_API getEventCount() override { return 0; }
    tresult PLUGIN_API getEvent(int32, Event&) override { return kResultFalse; }
    tresult PLUGIN_API addEvent(Event& event) override
    {
        events.push_back(event);
        answer();
        return kResultOk;
    }
    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    virtual ~AnsweredList() = default;

private:
    const std::function<void()> answer;
};

TEST_F(ProcessorMidiOut, ProcessEndsThoughTheLibraryNeverStopsWriting)
{
    writeNotes(3);
    AnsweredList list([this] { writeMidi(0x90, 60, 127); });
    ProcessData data;
    data.outputEvents = &list;
    EXPECT_EQ(processor->process(data), kResultOk);
    EXPECT_EQ(list.events.size(), 3u);
    EXPECT_EQ(drained().size(), 3u);
}

TEST_F(ProcessorMidiOut, ProcessDoesNotGiveWhatIsDroppedMeanwhile)
{
    writeNotes(100);
    bool first = true;
    AnsweredList list([&] {
        if (!std::exchange(first, false))
            return;
        writeMidi(0x90, 110, 127); // the hundredth again
        writeMidi(0x90, 111, 127); // one too many
    });
    ProcessData data;
    data.outputEvents = &list;
    EXPECT_EQ(processor->process(data), kResultOk);
    EXPECT_THAT(pitches(list.events), ElementsAre(0, 111));
    EXPECT_THAT(drained(), IsEmpty());
}

class ProcessorThreads : public ProcessorMidiOut {
protected:
    static constexpr int kThreads = 4;

    /** Each thread writes on its own channel, with the note's number as pitch. */
    std::vector<std::thread> startWriters(int notes)
    {
        std::vector<std::thread> writers;
        for (int channel = 0; channel < kThreads; ++channel)
            writers.emplace_back([this, channel, notes] {
                for (int note = 0; note < notes; ++note)
                    writeMidi(0x90 | channel, note, 127);
            });
        return writers;
    }

    static std::vector<int> pitchesOf(const std::vector<Event>& events, int channel)
    {
        std::vector<int> result;
        for (const auto& event : events)
            if (event.noteOn.channel == channel)
                result.push_back(event.noteOn.pitch);
        return result;
    }
};

TEST_F(ProcessorThreads, WriteMidiDuringProcessKeepsOrderAndTheNewestNote)
{
    auto writers = startWriters(200);
    std::vector<Event> events;
    for (int block = 0; block < 200; ++block) {
        const auto more = drained();
        EXPECT_LE(more.size(), 100u);
        events.insert(events.end(), more.begin(), more.end());
    }
    for (auto& writer : writers)
        writer.join();
    const auto rest = drained();
    events.insert(events.end(), rest.begin(), rest.end());

    // A full queue may have been dropped. Nothing comes twice or out of order, and the newest note
    // is always there.
    EXPECT_FALSE(events.empty());
    EXPECT_LE(events.size(), 4u * 200u);
    bool newest = false;
    for (int channel = 0; channel < kThreads; ++channel) {
        const auto written = pitchesOf(events, channel);
        for (size_t note = 1; note < written.size(); ++note)
            EXPECT_LT(written[note - 1], written[note]) << channel;
        newest = newest || (!written.empty() && written.back() == 199);
    }
    EXPECT_TRUE(newest);
}

/** Threads that write while the host makes other calls. The queue has room for all their notes. */
class ProcessorThreadsMeanwhile : public ProcessorThreads {
protected:
    static constexpr int kNotes = 20;

    /** The notes that the host got. Each turn begins with act. */
    template <class Act>
    std::vector<Event> writeMeanwhile(const Act& act)
    {
        auto writers = startWriters(kNotes);
        std::vector<Event> events;
        const auto process = [&] {
            const auto more = drained();
            events.insert(events.end(), more.begin(), more.end());
        };
        for (int turn = 0; turn < 10; ++turn) {
            act(turn);
            setUp(44100 + turn);
            sayUnicode(turn % 2);
            connect();
            processor->getLatencySamples();
            process();
            disconnect();
        }
        for (auto& writer : writers)
            writer.join();
        process();
        return events;
    }
};

TEST_F(ProcessorThreadsMeanwhile, WriteMidiLosesNothingWhileTheHostConnects)
{
    std::vector<int> all(kNotes);
    std::iota(all.begin(), all.end(), 0);
    for (int round = 0; round < 20; ++round) {
        const bool active = round % 2 == 0;
        processor->setActive(active);
        const auto events = writeMeanwhile([](int) {});
        for (int channel = 0; channel < kThreads; ++channel)
            EXPECT_EQ(pitchesOf(events, channel), active ? all : std::vector<int>()) << channel;
    }
}

TEST_F(ProcessorThreadsMeanwhile, WriteMidiKeepsItsOrderWhileTheHostActivates)
{
    for (int round = 0; round < 20; ++round) {
        const auto events =
            writeMeanwhile([this](int turn) { processor->setActive(turn % 2 == 0); });
        for (int channel = 0; channel < kThreads; ++channel) {
            const auto written = pitchesOf(events, channel);
            EXPECT_TRUE(std::is_sorted(written.begin(), written.end(), std::less_equal<>()));
            EXPECT_LE(written.size(), static_cast<size_t>(kNotes));
        }
        writeMidi(0x90, 60, 127); // inactive since the last turn
        EXPECT_THAT(drained(), IsEmpty());
        processor->setActive(true);
        writeMidi(0x90, 61, 127);
        EXPECT_THAT(pitches(drained()), ElementsAre(61));
    }
}

} // namespace
