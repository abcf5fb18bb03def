// What process forwards to the library: the host's events and its automation.
#include "tests/unit/ProcessorFixture.h"

#include <cmath>
#include <limits>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using doubles::noteOff;
using doubles::noteOn;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessEvents : public unit::ProcessorFixture {
protected:
    void SetUp() override { connect(); }

    std::string midiOf(const Event& event)
    {
        trace.clear();
        unit::Block block;
        block.in.add(event);
        EXPECT_EQ(processor->process(block.data), kResultOk);
        const auto texts = trace.texts();
        return texts.size() == 1 ? texts[0] : std::to_string(texts.size()) + " calls";
    }
};

class ProcessAutomation : public ProcessEvents {};

TEST_F(ProcessEvents, NoteOnVelocityReachesTheLibraryAs127OrZero)
{
    // A velocity above -1 and up to 0 rounds up to 0. Any other counts as 127, also NaN.
    for (const float velocity :
         {1.f, 0.5f, 0.001f, 1.f / 127, 2.f, std::numeric_limits<float>::denorm_min(),
          std::numeric_limits<float>::infinity()})
        EXPECT_EQ(midiOf(noteOn(0, 60, velocity)), "library.receiveHostMidi(90 3C 7F)") << velocity;
    EXPECT_EQ(midiOf(noteOn(0, 60, 0.f)), "library.receiveHostMidi(90 3C 00)");
    EXPECT_EQ(midiOf(noteOn(0, 60, -0.f)), "library.receiveHostMidi(90 3C 00)");
    EXPECT_EQ(midiOf(noteOn(0, 60, -0.5f)), "library.receiveHostMidi(90 3C 00)");
    EXPECT_EQ(midiOf(noteOn(0, 60, -0.999f)), "library.receiveHostMidi(90 3C 00)");
    EXPECT_EQ(midiOf(noteOn(0, 60, -1.f)), "library.receiveHostMidi(90 3C 7F)");
    EXPECT_EQ(midiOf(noteOn(0, 60, -1.5f)), "library.receiveHostMidi(90 3C 7F)");
    EXPECT_EQ(midiOf(noteOn(0, 60, std::nanf(""))), "library.receiveHostMidi(90 3C 7F)");
}

TEST_F(ProcessEvents, ChannelAndPitchAreTheirLowBytesAndNoteOffHasVelocityZero)
{
    EXPECT_EQ(midiOf(noteOn(15, 0, 1)), "library.receiveHostMidi(9F 00 7F)");
    EXPECT_EQ(midiOf(noteOn(0, 127, 1)), "library.receiveHostMidi(90 7F 7F)");
    EXPECT_EQ(midiOf(noteOn(0x0103, 0x013C, 1)), "library.receiveHostMidi(93 3C 7F)");
    EXPECT_EQ(midiOf(noteOn(0x60, 200, 1)), "library.receiveHostMidi(F0 C8 7F)");
    EXPECT_EQ(midiOf(noteOn(-1, -1, 1)), "library.receiveHostMidi(FF FF 7F)");
    EXPECT_EQ(midiOf(noteOff(0x10, 0x17F)), "library.receiveHostMidi(90 7F 00)");
    Event event = noteOff(9, 36);
    event.noteOff.velocity = 0.75f;
    EXPECT_EQ(midiOf(event), "library.receiveHostMidi(89 24 00)");
}

TEST_F(ProcessEvents, EveryOtherTypeIsThreeZeroBytes)
{
    for (const uint16 type :
         {Event::kDataEvent, Event::kPolyPressureEvent, Event::kNoteExpressionValueEvent,
          Event::kNoteExpressionTextEvent, Event::kChordEvent, Event::kScaleEvent,
          Event::kLegacyMIDICCOutEvent}) {
        Event event = noteOn(5, 60, 1);
        event.type = type;
        EXPECT_EQ(midiOf(event), "library.receiveHostMidi(00 00 00)") << type;
    }
    Event event = noteOn(5, 60, 1);
    event.type = 12345;
    EXPECT_EQ(midiOf(event), "library.receiveHostMidi(00 00 00)");
}

TEST_F(ProcessEvents, KeepsTheListsOrder)
{
    unit::Block block;
    block.in.add(noteOn(0, 60, 1));
    block.in.add(noteOff(0, 60));
    block.in.add(noteOn(1, 61, 1));
    processor->process(block.data);
    EXPECT_THAT(trace.texts(), ElementsAre("library.receiveHostMidi(90 3C 7F)",
                                           "library.receiveHostMidi(80 3C 00)",
                                           "library.receiveHostMidi(91 3D 7F)"));
}

TEST_F(ProcessEvents, SkipsEventsThatAreUnreadableOrThrowOneByOne)
{
    unit::Block block;
    for (int16 pitch = 60; pitch < 65; ++pitch)
        block.in.add(noteOn(0, pitch, 1));
    block.in.unreadable = {0, 2};
    block.in.throwing = {4};
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(trace.texts(), ElementsAre("library.receiveHostMidi(90 3D 7F)",
                                           "library.receiveHostMidi(90 3F 7F)"));
}

TEST_F(ProcessEvents, ForwardsAlsoWhileInactive)
{
    processor->setActive(false);
    EXPECT_EQ(midiOf(noteOn(0, 60, 1)), "library.receiveHostMidi(90 3C 7F)");
}

TEST_F(ProcessEvents, LosesOnlyTheEventForWhichTheLibraryThrew)
{
    library.throwAtCall(1);
    unit::Block block;
    block.in.add(noteOn(0, 60, 1));
    block.in.add(noteOn(0, 61, 1));
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_EQ(trace.count("library.receiveHostMidi(90 3D 7F)"), 1u);
}

TEST_F(ProcessEvents, GoesOnWithTheOtherListsAfterOneThatThrows)
{
    processor->setActive(true);
    writeMidi(0x90, 60, 127);
    unit::Block block;
    block.changes.add(7, {{0, 0.5}}).throws = true;
    block.in.add(noteOn(0, 60, 1));
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(trace.texts(), ElementsAre("library.receiveHostMidi(90 3C 7F)"));
    EXPECT_EQ(block.out.events.size(), 1u);

    writeMidi(0x90, 61, 127);
    unit::Block other;
    other.in.add(noteOn(0, 60, 1));
    other.in.throws = true;
    EXPECT_EQ(processor->process(other.data), kResultOk);
    EXPECT_EQ(other.out.events.size(), 1u);
}

TEST_F(ProcessEvents, DropsEventsWithoutALibrary)
{
    disconnect();
    trace.clear();
    unit::Block block;
    block.in.add(noteOn(0, 60, 1));
    block.changes.add(7, {{0, 0.5}});
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(trace.texts(), IsEmpty());
}

TEST_F(ProcessEvents, TakesBlocksWithoutListsOrSamples)
{
    for (const bool withLibrary : {true, false}) {
        if (!withLibrary)
            disconnect();
        trace.clear();
        ProcessData empty;
        EXPECT_EQ(processor->process(empty), kResultOk);
        unit::Block block;
        block.data.numSamples = 0;
        EXPECT_EQ(processor->process(block.data), kResultOk);
        EXPECT_THAT(trace.texts(), IsEmpty());
        EXPECT_THAT(block.out.events, IsEmpty());
    }
}

TEST_F(ProcessEvents, ForwardsEventsOfABlockWithoutSamples)
{
    unit::Block block;
    block.data.numSamples = 0;
    block.in.add(noteOn(0, 60, 1));
    block.changes.add(7, {{0, 0.5}});
    processor->process(block.data);
    EXPECT_THAT(trace.texts(), ElementsAre("library.hostParameterChanged(7, 0.5)",
                                           "library.receiveHostMidi(90 3C 7F)"));
}

TEST_F(ProcessEvents, HoldsNoReferenceToTheHostsLists)
{
    unit::Block block;
    block.in.add(noteOn(0, 60, 1));
    block.changes.add(7, {{0, 0.5}});
    processor->process(block.data);
    EXPECT_EQ(block.in.getReferences(), 1);
    EXPECT_EQ(block.out.getReferences(), 1);
    EXPECT_EQ(block.changes.foreignReferences(), 0);
}

TEST_F(ProcessEvents, LeavesAudioBuffersAndSilenceFlagsAlone)
{
    float left[] = {0.25f, -1.f, 3.f};
    float right[] = {1.f, 2.f, -3.f};
    float* channels[] = {left, right};
    AudioBusBuffers buses[2];
    for (auto& bus : buses) {
        bus.numChannels = 2;
        bus.silenceFlags = 0xA5;
        bus.channelBuffers32 = channels;
    }
    unit::Block block;
    block.data.numSamples = 3;
    block.data.numOutputs = 2;
    block.data.outputs = buses;
    block.in.add(noteOn(0, 60, 1));
    processor->process(block.data);
    EXPECT_THAT(left, ElementsAre(0.25f, -1.f, 3.f));
    EXPECT_THAT(right, ElementsAre(1.f, 2.f, -3.f));
    for (const auto& bus : buses)
        EXPECT_EQ(bus.silenceFlags, 0xA5u);
}

TEST_F(ProcessAutomation, ForwardsTheLastPointOfEachQueueUnchanged)
{
    unit::Block block;
    block.changes.add(37012000, {{0, 0.25}, {63, 0.5}});
    block.changes.add(4000000001u, {{0, 1.0}});
    block.changes.add(1, {{0, -7.25}});
    block.changes.add(2, {{0, 1e300}});
    block.in.add(noteOn(0, 60, 1));
    processor->process(block.data);
    EXPECT_THAT(trace.texts(), ElementsAre("library.hostParameterChanged(37012000, 0.5)",
                                           "library.hostParameterChanged(4000000001, 1)",
                                           "library.hostParameterChanged(1, -7.25)",
                                           "library.hostParameterChanged(2, 1e+300)",
                                           "library.receiveHostMidi(90 3C 7F)"));
}

TEST_F(ProcessAutomation, SkipsAQueueThatGivesNoLastPointOrThrowsAndForwardsTheRest)
{
    unit::Block block;
    block.changes.addNull();
    block.changes.add(1, {});
    block.changes.add(2, {{0, 0.25}, {1, 0.5}}).unreadable = {1};
    block.changes.add(3, {{0, 0.25}}).throws = true;
    block.changes.add(4, {{0, 0.25}, {1, 0.5}}).unreadable = {0};
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_THAT(trace.texts(), ElementsAre("library.hostParameterChanged(4, 0.5)"));
}

TEST_F(ProcessAutomation, LosesOnlyTheValueForWhichTheLibraryThrew)
{
    library.throwAtCall(1);
    unit::Block block;
    block.changes.add(1, {{0, 0.5}});
    block.changes.add(2, {{0, 0.5}});
    EXPECT_EQ(processor->process(block.data), kResultOk);
    EXPECT_EQ(trace.count("library.hostParameterChanged(2, 0.5)"), 1u);
}

} // namespace
