// Real songs through the real plug-in: every note reaches the library and leaves through "Midi
// Out".
#include "editorlib/VstIEffectInterface.h"
#include "tests/doubles/EventListDouble.h"
#include "tests/plugin/PlugInFixture.h"

#include <memory>
#include <smf.h>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr double kSampleRate = 48000;

struct Note {
    int64 sample;
    int channel;
    int pitch;
    int velocity; ///< 0 to 127
    bool on;      ///< a note-on message, also of velocity 0
};

struct CloseSong {
    void operator()(smf_t* song) const { smf_delete(song); }
};

std::vector<Note> readSong(const std::string& path)
{
    const std::unique_ptr<smf_t, CloseSong> song(smf_load(path.c_str()));
    std::vector<Note> notes;
    if (!song)
        return notes;
    while (const smf_event_t* event = smf_get_next_event(song.get())) {
        const int kind = event->midi_buffer[0] & 0xF0;
        if (event->midi_buffer_length != 3 || (kind != 0x80 && kind != 0x90))
            continue;
        notes.push_back({static_cast<int64>(event->time_seconds * kSampleRate),
                         event->midi_buffer[0] & 0x0F, event->midi_buffer[1], event->midi_buffer[2],
                         kind == 0x90});
    }
    return notes;
}

/** "90 3C 7F", as the trace has it. */
std::string textOf(const Note& note)
{
    const int bytes[] = {(note.on ? 0x90 : 0x80) | note.channel, note.pitch,
                         note.on && note.velocity > 0 ? 127 : 0};
    char text[16];
    std::snprintf(text, sizeof(text), "%02X %02X %02X", bytes[0], bytes[1], bytes[2]);
    return "library.receiveHostMidi(" + std::string(text) + ")";
}

Event eventOf(const Note& note, int64 blockStart)
{
    Event event =
        note.on
            ? doubles::noteOn(static_cast<int16>(note.channel), static_cast<int16>(note.pitch),
                              static_cast<float>(note.velocity) / 127)
            : doubles::noteOff(static_cast<int16>(note.channel), static_cast<int16>(note.pitch));
    event.sampleOffset = static_cast<int32>(note.sample - blockStart);
    return event;
}

/** How many of a block's notes are left in a queue that is emptied whenever 100 wait and one more
    comes. */
size_t leftOf(size_t notesOfBlock)
{
    return notesOfBlock == 0 ? 0 : (notesOfBlock - 1) % 100 + 1;
}

class Songs : public plugin::PlugInFixture, public testing::WithParamInterface<std::string> {
protected:
    doubles::LoadedLibrary library{trace};
    const std::vector<Note> notes = readSong(SONG_FOLDER "/" + GetParam() + ".mid");
    IPtr<IAudioProcessor> processor;

    void SetUp() override
    {
        ASSERT_TRUE(library) << "this program runs under with-simulator --library";
        ASSERT_GT(notes.size(), 200u)
            << "install the Debian package openttd-openmsx, which has the songs in " SONG_FOLDER;
        PlugInFixture::SetUp();
        ASSERT_EQ(initialize(), kResultOk);
        startProcessor();
        processor = FUnknownPtr<IAudioProcessor>(component);
        ASSERT_TRUE(processor);
        sendNotesBack();
    }

    void TearDown() override
    {
        if (!processor)
            return;
        processor = nullptr;
        stopProcessor();
        controller->terminate();
        releaseComponents();
        EXPECT_THAT(host.ledger(), testing::IsEmpty());
        EXPECT_THAT(library->complaints(), testing::IsEmpty());
    }

    /** The library hands each note on at once, as an instrument's driver would. */
    void sendNotesBack()
    {
        library->onCall = [this](const std::string& text) {
            unsigned bytes[3];
            if (std::sscanf(text.c_str(), "library.receiveHostMidi(%2X %2X %2X)", &bytes[0],
                            &bytes[1], &bytes[2]) != 3)
                return;
            const unsigned char midi[] = {static_cast<unsigned char>(bytes[0]),
                                          static_cast<unsigned char>(bytes[1]),
                                          static_cast<unsigned char>(bytes[2])};
            library->effect->writeMidi(midi, 3);
        };
    }

    void activate(int32 blockSize)
    {
        ProcessSetup setup{kRealtime, kSample32, blockSize, kSampleRate};
        EXPECT_EQ(processor->setupProcessing(setup), kResultOk);
        EXPECT_EQ(component->setActive(true), kResultOk);
        processor->setProcessing(true); // which plug-ins need not implement
    }

    void deactivate()
    {
        processor->setProcessing(false);
        EXPECT_EQ(component->setActive(false), kResultOk);
    }

    /** Plays the song and gives what left. */
    std::vector<Event> play(int32 blockSize)
    {
        activate(blockSize);
        trace.clear();
        std::vector<Event> left;
        size_t next = 0;
        for (int64 start = 0; next < notes.size(); start += blockSize) {
            doubles::EventListDouble in;
            for (; next < notes.size() && notes[next].sample < start + blockSize; ++next)
                in.add(eventOf(notes[next], start));
            doubles::EventListDouble out;
            ProcessData data;
            data.numSamples = blockSize;
            data.inputEvents = &in;
            data.outputEvents = &out;
            EXPECT_EQ(processor->process(data), kResultOk);
            left.insert(left.end(), out.events.begin(), out.events.end());
        }
        deactivate();
        return left;
    }

    void expectArrived() const
    {
        Texts expected;
        expected.reserve(notes.size());
        for (const auto& note : notes)
            expected.push_back(textOf(note));
        EXPECT_TRUE(trace.textsOf({"library.receiveHostMidi"}) == expected);
    }

    static void expectLeft(const std::vector<Event>& events, const std::vector<Note>& expected)
    {
        ASSERT_EQ(events.size(), expected.size());
        for (size_t index = 0; index < expected.size(); ++index) {
            const auto& event = events[index];
            const auto& note = expected[index];
            ASSERT_EQ(event.type, Event::kNoteOnEvent) << index;
            ASSERT_EQ(event.busIndex, 0) << index;
            ASSERT_EQ(event.noteOn.channel, note.channel) << index;
            ASSERT_EQ(event.noteOn.pitch, note.pitch) << index;
            ASSERT_EQ(event.noteOn.velocity, note.on && note.velocity > 0 ? 1.f : 0.f) << index;
        }
    }

    /** What the rule of the queue leaves of a song. */
    std::vector<Note> leftOfSong(int32 blockSize) const
    {
        std::vector<Note> left;
        for (size_t begin = 0; begin < notes.size();) {
            const int64 block = notes[begin].sample / blockSize;
            size_t end = begin;
            while (end < notes.size() && notes[end].sample / blockSize == block)
                ++end;
            for (size_t index = end - leftOf(end - begin); index < end; ++index)
                left.push_back(notes[index]);
            begin = end;
        }
        return left;
    }
};

TEST_P(Songs, ProcessTakesAndGivesEveryNote)
{
    for (const int32 blockSize : {64, 512, 4096}) {
        SCOPED_TRACE(blockSize);
        const auto left = play(blockSize);
        expectArrived();
        expectLeft(left, leftOfSong(blockSize));
        // None of these songs has more than 100 notes within so short a time.
        EXPECT_EQ(left.size(), notes.size());
    }
}

TEST_P(Songs, ProcessGivesTheNewestAfterMoreThanAHundredNotesInABlock)
{
    const int32 tenSeconds = 480000;
    const auto left = play(tenSeconds);
    expectArrived();
    const auto expected = leftOfSong(tenSeconds);
    expectLeft(left, expected);
    EXPECT_LT(expected.size(), notes.size()) << "no block was over the limit";
}

// From one of the shortest files to the longest.
INSTANTIATE_TEST_SUITE_P(OpenMsx, Songs,
                         testing::Values("ultimate_run", "linns_basket", "run_for_your_life",
                                         "keep_on_rolling"),
                         [](const auto& song) { return song.param; });

} // namespace
