// The processor's block.
#include "tests/bench/Blocks.h"
#include "tests/bench/growth/Growth.h"
#include "tests/bench/LinkedInstance.h"
#include "tests/doubles/Parameters.h"

namespace bench::growth {

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr auto kSubject = "a block";
constexpr ParamID kFirstId = 37012000;

/** An instance and what its host gives it. */
struct Playing : LinkedScene {
    Block block;

    double time()
    {
        return timeOf([this] { instance.process(block.data); });
    }
};

double ofLength(int samples)
{
    Playing playing;
    playing.block.addNote(60);
    playing.block.addChange(kFirstId, 1);
    playing.block.data.numSamples = samples;
    return playing.time();
}

double ofNotes(int count)
{
    Playing playing;
    EventList events(count);
    for (int number = 0; number < count; ++number) {
        Event event = {};
        event.type = Event::kNoteOnEvent;
        event.noteOn.pitch = static_cast<int16>(number % 128);
        event.noteOn.velocity = 0.5F;
        events.addEvent(event);
    }
    playing.block.data.inputEvents = &events;
    return playing.time();
}

double ofParameters(int count, int points)
{
    Playing playing;
    for (int number = 0; number < count; ++number)
        playing.block.addChange(kFirstId + static_cast<ParamID>(number), points);
    return playing.time();
}

/** What the library writes between two blocks, and the block that hands it over. */
double ofOutgoing(int count)
{
    constexpr uint8 note[] = {0x90, 60, 100};
    Playing playing;
    return timeOf([&] {
        playing.block.out.clear();
        for (int number = 0; number < count; ++number)
            playing.instance.writeMidi(note, sizeof(note));
        playing.instance.process(playing.block.data);
    });
}

} // namespace

void addBlockSeries()
{
    const auto add = [](const char* name, const char* counted, std::vector<int> sizes,
                        std::function<double(int)> measure) {
        addSeries({kSubject, name, counted, Cost::seconds, std::move(sizes), std::move(measure)});
    };
    add("length", "samples", steps(16, 2, 8192), ofLength);
    add("notes in", "notes", steps(1, 4, 16'384), ofNotes);
    add("notes out, written and sent", "notes", {1, 3, 10, 30, 99}, ofOutgoing);
    add("parameters", "parameters", {1, 3, 10, 30, 100, doubles::kParameters},
        [](int count) { return ofParameters(count, 1); });
    add("points of 16 parameters", "points", steps(1, 4, 4096),
        [](int points) { return ofParameters(16, points); });
}

} // namespace bench::growth
