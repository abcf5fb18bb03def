#include "simulator/port/PortSender.h"

#include "simulator/MidiMapping.h"

#include <cstdio>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

void say(const std::string& text)
{
    std::fprintf(stderr, "simulator: %s\n", text.c_str());
}

} // namespace

PortSender::PortSender(std::shared_ptr<PortLine> sharedLine, std::unique_ptr<MidiDriver> portDriver)
: line(std::move(sharedLine))
, driver(std::move(portDriver))
{
}

void PortSender::run()
{
    while (true) {
        followChoice();
        sendAll();
        if (line->ending)
            break;
        line->outgoing.wait(PortLine::lookMilliseconds);
        lookAfterPort();
    }
    leavePort();
    line->setEnded();
}

void PortSender::followChoice()
{
    std::string which;
    if (!line->takeChoice(which))
        return;
    leavePort();
    const bool isFirst = std::exchange(isFirstChoice, false);
    if (which.empty())
        return line->setState(State::none, "", "none is chosen");
    try {
        name = driver->open(
            which, [shared = line](const MidiMessage& message) { shared->arrive(message); });
        state = State::open;
        line->setState(state, name, "");
        if (!isFirst)
            tellReturn();
    } catch (const std::exception& error) {
        say(std::string("no MIDI port, ") + error.what());
        line->setState(State::none, "", error.what());
    }
}

void PortSender::sendAll()
{
    MidiMessage message;
    while (line->take(message)) {
        send(message);
        --line->waiting;
    }
    if (line->hasLostNotes.exchange(false))
        for (int32 channel = 0; channel < channels; ++channel)
            pass(MidiMessage::controllerChange(channel, MidiMapping::allNotesOff, 0));
}

void PortSender::send(const MidiMessage& message)
{
    if (!pass(message)) {
        ++line->lost;
        return;
    }
    ++line->left;
    if (!message.isNote())
        return;
    ++line->notesLeft;
    const int32 note = message.channel() * pitches + message.bytes[1];
    sounding[static_cast<size_t>(note)] = message.startsNote();
}

bool PortSender::pass(const MidiMessage& message)
{
    return state == State::open && driver->send(message);
}

void PortSender::lookAfterPort()
{
    const auto now = Clock::now();
    if ((state != State::open && state != State::away) || now < nextLook)
        return;
    nextLook = now + std::chrono::milliseconds(PortLine::lookMilliseconds);
    const auto seen = driver->look();
    if (seen == MidiDriver::State::gone)
        leaveLostPort();
    else if (seen == MidiDriver::State::away && state == State::open)
        markAway();
    else if (seen == MidiDriver::State::there && state == State::away)
        markBack();
}

void PortSender::markAway()
{
    say("the MIDI port \"" + name + "\" is gone");
    state = State::away;
    line->setState(state, name, "it is gone");
}

void PortSender::markBack()
{
    say("the MIDI port \"" + name + "\" is back");
    state = State::open;
    endNotes(); // note-offs may have been dropped while it was away
    line->setState(state, name, "");
    tellReturn();
}

void PortSender::leaveLostPort()
{
    say("the MIDI port \"" + name + "\" is gone with the system's MIDI service");
    state = State::none;
    sounding.reset();
    line->setState(state, name, "the system's MIDI service is gone");
    driver->close();
}

void PortSender::tellReturn()
{
    line->isBack = true;
    line->incoming.wake();
}

void PortSender::leavePort()
{
    if (state == State::unused)
        return;
    endNotes();
    if (state != State::none)
        driver->close();
    state = State::unused;
}

/** Ends each note that sounds, then all notes of its channel, for an instrument that plays on
    by itself. */
void PortSender::endNotes()
{
    std::bitset<channels> used;
    for (size_t note = 0; note < sounding.size(); ++note)
        if (sounding[note]) {
            const auto channel = static_cast<int32>(note) / pitches;
            used[static_cast<size_t>(channel)] = true;
            pass(MidiMessage::endOfNote(channel, static_cast<int32>(note) % pitches));
        }
    for (int32 channel = 0; channel < channels; ++channel)
        if (used[static_cast<size_t>(channel)])
            pass(MidiMessage::controllerChange(channel, MidiMapping::allNotesOff, 0));
    sounding.reset();
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
