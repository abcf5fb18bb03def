// The library's notes on their way to the host.
#include "processor/MidiOutQueue.h"

#include <gtest/gtest.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

Event note(int pitch)
{
    Event event = {};
    event.type = Event::kNoteOnEvent;
    event.noteOn.pitch = static_cast<int16>(pitch);
    return event;
}

/** The pitch of the oldest event, or -1. */
int popPitch(MidiOutQueue& queue)
{
    Event event;
    return queue.pop(event) ? event.noteOn.pitch : -1;
}

TEST(MidiOutQueue, IsEmptyAtFirst)
{
    MidiOutQueue queue;
    EXPECT_EQ(queue.size(), 0u);
    EXPECT_EQ(popPitch(queue), -1);
}

TEST(MidiOutQueue, GivesTheOldestFirstHoweverOftenItGoesRound)
{
    MidiOutQueue queue;
    int in = 0;
    int out = 0;
    for (int round = 0; round < 50; ++round) {
        for (int number = 0; number < 7; ++number)
            queue.push(note(in++));
        for (int number = 0; number < 6; ++number)
            EXPECT_EQ(popPitch(queue), out++);
    }
    EXPECT_EQ(queue.size(), 50u);
    while (queue.size() > 0)
        EXPECT_EQ(popPitch(queue), out++);
    EXPECT_EQ(out, in);
}

TEST(MidiOutQueue, HoldsAHundredEvents)
{
    MidiOutQueue queue;
    for (int pitch = 0; pitch < 100; ++pitch)
        queue.push(note(pitch));
    EXPECT_EQ(queue.size(), 100u);
    for (int pitch = 0; pitch < 100; ++pitch)
        EXPECT_EQ(popPitch(queue), pitch);
    EXPECT_EQ(popPitch(queue), -1);
}

TEST(MidiOutQueue, DropsAllOfAHundredForOneMore)
{
    MidiOutQueue queue;
    queue.push(note(0));
    queue.push(note(0));
    popPitch(queue); // one is left, which does not stand at the memory's begin
    for (int pitch = 1; pitch <= 100; ++pitch)
        queue.push(note(pitch));
    EXPECT_EQ(queue.size(), 1u);
    EXPECT_EQ(popPitch(queue), 100);
    EXPECT_EQ(popPitch(queue), -1);
}

} // namespace
