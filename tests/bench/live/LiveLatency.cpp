// live-latency: how long a note takes from its host's block to the instrument's MIDI port, beside a
// plain RtMidi program that sends the same notes at the same moments.
//
//   scripts/live-latency        builds and prints the table
//
// docs/performance.md says what the table is about.
#include "tests/bench/live/Passage.h"
#include "tests/live/JackServer.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"
#include "tools/common/Instance.h"
#include "tools/common/LoadedSimulator.h"
#include "tools/common/Program.h"
#include "tools/play/Host.h"
#include "tools/play/live/PortWish.h"
#include "tools/play/music/Player.h"

#include <chrono>
#include <CLI/CLI.hpp>
#include <cstdio>
#include <RtMidi.h>
#include <thread>

namespace {

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using namespace bench;

constexpr int kSampleRate = 48000;
constexpr std::chrono::milliseconds kPause{10};
constexpr std::chrono::seconds kPatience{30};

struct Wishes {
    std::vector<int> blocks = {64, 128, 256, 512, 1024, 2048};
    double seconds = 5; ///< of a passage
    int rounds = 3;     ///< passages of each side, in turn
    int period = 64;    ///< the server's, in samples
};

template <typename Condition>
void waitFor(const std::string& what, Condition&& condition)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            throw tools::Failure("It takes too long until " + what + ".");
        std::this_thread::sleep_for(kPause);
    }
}

/** What has arrived, once nothing more arrives. */
std::vector<live::JackPeer::Message> allOf(live::JackPeer& recorder)
{
    size_t count = 0;
    do {
        count = recorder.receivedCount();
        std::this_thread::sleep_for(20 * kPause);
    } while (recorder.receivedCount() != count);
    auto messages = recorder.received();
    recorder.clear();
    return messages;
}

/** The plug-in in play's host, with the simulated instrument at the recorder's port. */
class OurSide {
public:
    explicit OurSide(const std::string& port)
    : host(options())
    , plugIn(BUNDLE_FOLDER, host.context())
    , wish(true, port)
    , instance(plugIn, host.context(), host.handler())
    , simulator(tools::findSimulator(SIMULATOR_FILE))
    {
        wish.end();
        waitFor("the instrument has its port", [this] {
            return simulator &&
                   simulator->midiPort().state == SimulatorControl::MidiPort::State::open;
        });
    }

    Passage play(const Song& song, int64 end, int blockSize)
    {
        instance.start(kSampleRate, blockSize);
        Player player(instance.processor(), instance.processData(), song,
                      {kSampleRate, blockSize, true});
        Passage passage;
        int64 played = 0;
        player.playLive({}, [&] { return played >= end; });
        player.run([&](int64 position, int64, double, ParameterChanges&) {
            played = position + blockSize;
            passage.blocks.push_back(now());
        });
        instance.stop();
        passage.begin = passage.blocks.front();
        return passage;
    }

private:
    static Options options()
    {
        Options wishes;
        wishes.binding = Options::Binding::service;
        wishes.library = SIMULATOR_FILE;
        return wishes;
    }

    Host host;
    tools::PlugIn plugIn;
    PortWish wish;
    tools::Instance instance;
    SimulatorControl* simulator;
};

/** The simplest program that sends notes at their times. */
class Floor {
public:
    explicit Floor(const std::string& port)
    : out(RtMidi::UNIX_JACK, "plain")
    {
        for (unsigned number = 0; number < out.getPortCount(); ++number)
            if (out.getPortName(number) == port) {
                out.openPort(number, "out");
                return;
            }
        throw tools::Failure("There is no port \"" + port + "\".");
    }

    Passage play(const Song& song, int64 end, int blockSize)
    {
        Passage passage;
        size_t next = 0;
        const auto begin = std::chrono::steady_clock::now();
        for (int64 start = 0; start < end; start += blockSize) {
            const std::chrono::duration<double> due(static_cast<double>(start) / kSampleRate);
            std::this_thread::sleep_until(
                begin + std::chrono::duration_cast<std::chrono::steady_clock::duration>(due));
            passage.blocks.push_back(now());
            for (; next < song.notes().size(); ++next) {
                const auto& note = song.notes()[next];
                if (song.tempo().sampleAt(note.pulse, kSampleRate) >= start + blockSize)
                    break;
                const uint8 bytes[] = {static_cast<uint8>((note.on ? 0x90 : 0x80) | note.channel),
                                       note.pitch, static_cast<uint8>(note.on ? 127 : 0)};
                out.sendMessage(bytes, sizeof(bytes));
            }
        }
        passage.begin = passage.blocks.front();
        return passage;
    }

private:
    RtMidiOut out;
};

void printHead(const Wishes& wishes)
{
    std::printf(
        "A JACK server without hardware, period %d samples (%.1f ms); %d Hz; %d x %.1f s.\n",
        wishes.period, 1e3 * wishes.period / kSampleRate, kSampleRate, wishes.rounds,
        wishes.seconds);
    std::printf("%-22s %-10s %7s %5s %10s %10s %10s %10s\n", "host's block", "side", "notes",
                "lost", "median", "99 %", "worst", "jitter");
}

void printLine(const std::string& block, const char* side, const Times& times, int64_t lost)
{
    const auto milliseconds = [](double microseconds) {
        char text[32];
        std::snprintf(text, sizeof(text), "%.2f ms", microseconds / 1e3);
        return std::string(text);
    };
    std::printf("%-22s %-10s %7zu %5lld %10s %10s %10s %10s\n", block.c_str(), side, times.notes(),
                static_cast<long long>(lost), milliseconds(times.latency(0.5)).c_str(),
                milliseconds(times.latency(0.99)).c_str(), milliseconds(times.latency(1)).c_str(),
                milliseconds(times.jitter()).c_str());
    std::fflush(stdout);
}

int run(int argc, char** argv)
{
    Wishes wishes;
    CLI::App app(
        "Measures how long a note takes from its host's block to the instrument's MIDI port.");
    app.add_option("--blocks", wishes.blocks, "Samples a block of the host's")
        ->capture_default_str();
    app.add_option("--seconds", wishes.seconds, "Length of a passage")->capture_default_str();
    app.add_option("--rounds", wishes.rounds, "Passages of each side")->capture_default_str();
    app.add_option("--period", wishes.period, "Samples a period of the JACK server's")
        ->capture_default_str();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    }

    const live::JackServer server(wishes.period);
    live::JackPeer ourRecorder("ours");
    live::JackPeer floorRecorder("floor");
    const doubles::ScratchFolder folder;
    const Song song(folder.write("dense.mid", denseSong(wishes.seconds)));
    const auto end = static_cast<int64>(wishes.seconds * kSampleRate);
    OurSide ours("ours:in");
    Floor floor("floor:in");
    floor.play(song, kSampleRate / 10, wishes.blocks.front()); // connections stand, code is loaded
    ours.play(song, kSampleRate / 10, wishes.blocks.front());
    allOf(floorRecorder);
    allOf(ourRecorder);

    printHead(wishes);
    bool isWhole = true;
    for (const int block : wishes.blocks) {
        Times ourTimes;
        Times floorTimes;
        int64_t ourLost = 0;
        int64_t floorLost = 0;
        for (int round = 0; round < wishes.rounds; ++round) {
            const auto plain = floor.play(song, end, block);
            floorLost += floorTimes.add(song, end, kSampleRate, block, plain, allOf(floorRecorder));
            const auto passage = ours.play(song, end, block);
            ourLost += ourTimes.add(song, end, kSampleRate, block, passage, allOf(ourRecorder));
        }
        char text[32];
        std::snprintf(text, sizeof(text), "%d (%.1f ms)", block, 1e3 * block / kSampleRate);
        printLine(text, "ours", ourTimes, ourLost);
        printLine("", "floor", floorTimes, floorLost);
        isWhole = isWhole && ourLost == 0 && floorLost == 0;
    }
    return isWhole ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    return tools::runProgram("live-latency", run, argc, argv);
}
