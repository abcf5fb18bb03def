#include "tools/play/music/Player.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr float kLargestVelocity = 127.F;
/** More than the plug-in ever queues, so that this list is never what loses an event. */
constexpr int32 kOutputCapacity = 4096;
constexpr int32 kLiveNotesInABlock = 4096;

uint8 velocityByte(const NoteOnEvent& note)
{
    const auto scaled = std::lround(note.velocity * kLargestVelocity);
    return static_cast<uint8>(std::clamp(scaled, 0L, 127L));
}

} // namespace

Player::Player(IAudioProcessor& audioProcessor, ProcessData& processData, const Song& playedSong,
               const Settings& playSettings)
: processor(audioProcessor)
, data(processData)
, song(playedSong)
, settings(playSettings)
, output(kOutputCapacity)
{
    input.setMaxSize(std::max(mostNotesInABlock(), 1));
    context.sampleRate = settings.sampleRate;
    data.processMode = kRealtime;
    data.symbolicSampleSize = kSample32;
    data.inputEvents = &input;
    data.outputEvents = &output;
    data.inputParameterChanges = &changes;
    data.outputParameterChanges = nullptr;
    data.processContext = &context;
}

int32 Player::mostNotesInABlock() const
{
    int64 block = -1;
    int32 count = 0;
    int32 most = 0;
    for (const auto& note : song.notes()) {
        const auto sample = song.tempo().sampleAt(note.pulse, settings.sampleRate);
        count = sample / settings.blockSize == block ? count + 1 : 1;
        block = sample / settings.blockSize;
        most = std::max(most, count);
    }
    return most;
}

void Player::playLive(LiveNotes notes, StopAsked isStopAsked)
{
    liveNotes = std::move(notes);
    stopAsked = std::move(isStopAsked);
    input.setMaxSize(mostNotesInABlock() + kLiveNotesInABlock);
}

bool Player::goesOn(int64 start, int64 length) const
{
    return (start < length || settings.endless) && !(stopAsked && stopAsked());
}

std::bitset<16> Player::soundingChannels() const
{
    std::bitset<16> channels;
    for (size_t note = 0; note < kNotes; ++note)
        if (sounding[note])
            channels[note / kPitches] = true;
    return channels;
}

PlayResult Player::run(const BetweenBlocks& betweenBlocks)
{
    next = 0;
    const auto length =
        song.tempo().sampleAt(song.lengthInPulses(), settings.sampleRate) + settings.sampleRate / 2;
    prepareResult(length);
    const auto begin = Clock::now();
    int64 start = 0;
    for (; goesOn(start, length); start += settings.blockSize) {
        const Seconds position(static_cast<double>(start) / settings.sampleRate);
        if (settings.realtime)
            std::this_thread::sleep_until(begin +
                                          std::chrono::duration_cast<Clock::duration>(position));
        changes.clearQueue();
        if (betweenBlocks)
            betweenBlocks(start, length,
                          static_cast<double>(settings.blockSize) / settings.sampleRate, changes);
        input.clear();
        sendNotes(start, settings.blockSize);
        sendLiveNotes(start);
        processBlock(start, settings.blockSize);
    }
    if (stopAsked)
        endNotes(start);
    return result;
}

/** Reserves all memory now, so that allocating it does not disturb what is measured. */
void Player::prepareResult(int64 length)
{
    result = {};
    result.incoming.reserve(song.notes().size());
    result.outgoing.reserve(song.notes().size());
    result.timeline = Timeline((length + settings.blockSize - 1) / settings.blockSize);
}

void Player::processBlock(int64 start, int32 count)
{
    output.clear();
    context.state = ProcessContext::kPlaying | ProcessContext::kContTimeValid;
    context.projectTimeSamples = start;
    context.continousTimeSamples = start;
    data.numSamples = count;

    const auto begin = Clock::now();
    processor.process(data);
    const auto seconds = Seconds(Clock::now() - begin).count();

    result.process.add(seconds);
    if (seconds > static_cast<double>(count) / settings.sampleRate)
        ++result.lateBlocks;
    result.timeline.add({seconds, input.getEventCount(), output.getEventCount()});
    result.samples += count;
    ++result.blocks;
    takeOutgoing(start);
}

void Player::sendNotes(int64 start, int32 count)
{
    const auto& notes = song.notes();
    for (; next < notes.size(); ++next) {
        const auto sample = song.tempo().sampleAt(notes[next].pulse, settings.sampleRate);
        if (sample >= start + count)
            break;
        send(notes[next], start, sample);
    }
    if (input.getEventCount() > kPlugInQueue)
        ++result.crowdedBlocks;
}

void Player::sendLiveNotes(int64 start)
{
    NoteEvent note{};
    while (liveNotes && input.getEventCount() < kLiveNotesInABlock && liveNotes(note))
        send(note, start, start);
}

void Player::endNotes(int64 start)
{
    input.clear();
    changes.clearQueue();
    for (size_t note = 0; note < kNotes; ++note)
        if (sounding[note])
            send({0, static_cast<uint8>(note / kPitches), static_cast<uint8>(note % kPitches), 0,
                  false},
                 start, start);
    processBlock(start, settings.blockSize);
}

void Player::send(const NoteEvent& note, int64 start, int64 sample)
{
    Event event{};
    event.sampleOffset = static_cast<int32>(sample - start);
    const auto velocity = static_cast<float>(note.velocity) / kLargestVelocity;
    if (note.on) {
        event.type = Event::kNoteOnEvent;
        event.noteOn = {note.channel, note.pitch, 0.F, velocity, 0, -1};
    } else {
        event.type = Event::kNoteOffEvent;
        event.noteOff = {note.channel, note.pitch, velocity, -1, 0.F};
    }
    if (input.addEvent(event) != kResultOk)
        return;
    result.sent.count(note.channel, note.on);
    sounding[(note.channel & 0x0FU) * kPitches + (note.pitch & 0x7FU)] = note.on;
    result.incoming.push_back({sample, note.channel, note.pitch, note.velocity, note.on});
}

void Player::takeOutgoing(int64 start)
{
    for (int32 i = 0; i < output.getEventCount(); ++i) {
        Event event{};
        if (output.getEvent(i, event) != kResultOk)
            continue;
        OutgoingNote note{start + event.sampleOffset, 0, 0, 0};
        if (event.type == Event::kNoteOnEvent) {
            note.channel = static_cast<uint8>(event.noteOn.channel & 0x0F);
            note.pitch = static_cast<uint8>(event.noteOn.pitch & 0x7F);
            note.velocity = velocityByte(event.noteOn);
        } else if (event.type == Event::kNoteOffEvent) {
            note.channel = static_cast<uint8>(event.noteOff.channel & 0x0F);
            note.pitch = static_cast<uint8>(event.noteOff.pitch & 0x7F);
        } else {
            ++result.otherOutgoing;
            continue;
        }
        result.left.count(note.channel, note.velocity > 0);
        result.outgoing.push_back(note);
    }
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
