// The built program, the built plug-in and the simulated editor library together.
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"
#include "tools/play/music/Song.h"
#include "tools/play/output/WavFile.h"

#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <iterator>
#include <nlohmann/json.hpp>

using namespace Steinberg::Vst::play;
using doubles::midiFile;
using doubles::MidiTrack;
using doubles::playOnThisMachine;
using doubles::playReport;
using doubles::runPlay;
using doubles::ScratchFolder;
using doubles::Words;
using testing::HasSubstr;

namespace {

using Json = nlohmann::json;

/** Twelve seconds: notes on channels 1 and 10 at the start, note-offs at the end. */
std::string shortSong()
{
    return midiFile(480, MidiTrack()
                             .program(0, 0, 40)
                             .noteOn(0, 0, 60, 1)
                             .noteOn(0, 9, 36, 127)
                             .noteOff(11520, 0, 60, 64)
                             .noteOn(0, 9, 36, 0));
}

class PlaySession : public testing::Test {
protected:
    ScratchFolder folder;
    std::string song = folder.write("song.mid", shortSong());
};

} // namespace

TEST_F(PlaySession, PlaysThroughTheInstalledLibrary)
{
    const auto json = playReport({song});
    EXPECT_EQ(json["plugIn"], "RDL3/RDL5 VST 1.6.6");
    EXPECT_EQ(json["vendor"], "Tavrin Corporation");
    EXPECT_THAT(json["binding"].get<std::string>(),
                HasSubstr("loaded by the plug-in from /Library/"));
    EXPECT_EQ(json["notes"]["sent"]["noteOns"][0], 1);
    EXPECT_EQ(json["notes"]["sent"]["noteOffs"][9], 1);
    EXPECT_EQ(json["notes"]["editor"], json["notes"]["sent"]);
    EXPECT_EQ(json["notes"]["midiOut"], json["notes"]["sent"]);
    EXPECT_EQ(json["notes"]["lost"], 0);
    EXPECT_TRUE(json["state"]["cameBack"]);
    EXPECT_GT(json["state"]["bytes"], 8);
}

TEST_F(PlaySession, PlaysThroughTheHostsService)
{
    const auto json = playReport({song, "--binding", "service", "--library", SIMULATOR_LIBRARY},
                                 playOnThisMachine);
    EXPECT_THAT(json["binding"].get<std::string>(), HasSubstr("lent by the host's service from "));
    EXPECT_EQ(json["notes"]["editor"], json["notes"]["sent"]);
    EXPECT_EQ(json["notes"]["midiOut"], json["notes"]["sent"]);
    EXPECT_TRUE(json["state"]["cameBack"]);
}

TEST_F(PlaySession, ShowsTheFourBuses)
{
    const auto buses = playReport({song})["buses"];
    ASSERT_EQ(buses.size(), 4U);
    const auto is = [&](size_t i, const char* name, const char* type, const char* direction,
                        int channels) {
        EXPECT_EQ(buses[i]["name"], name);
        EXPECT_EQ(buses[i]["type"], type);
        EXPECT_EQ(buses[i]["direction"], direction);
        EXPECT_EQ(buses[i]["channels"], channels);
    };
    is(0, "RDL3/RDL5 1", "audio", "output", 2);
    is(1, "RDL3/RDL5 2", "audio", "output", 2);
    is(2, "Midi In", "event", "input", 16);
    is(3, "Midi Out", "event", "output", 16);
}

TEST_F(PlaySession, IsTakenForTheHostThatItPretendsToBe)
{
    const auto hostType = [&](const std::string& host) {
        return playReport({song, "--host", host})["hostType"];
    };
    EXPECT_EQ(hostType("cubase:7.5.1"), 0);
    EXPECT_EQ(hostType("nuendo:6.5.0"), 0);
    EXPECT_EQ(hostType("cubase-le:5.0.0"), 0);
    EXPECT_EQ(hostType("older"), 0);
    EXPECT_EQ(hostType("standalone"), 1);
    EXPECT_EQ(hostType("plain"), 2);
    EXPECT_EQ(playReport({song, "--host", "cubase", "--no-unicode"})["hostType"], 0);
}

TEST_F(PlaySession, TellsTheLatencyOfOneMillisecondInAUnicodeHostOnly)
{
    EXPECT_EQ(playReport({song})["latency"], 44);
    EXPECT_EQ(playReport({song, "--rate", "96000"})["latency"], 96);
    EXPECT_EQ(playReport({song, "--host", "plain"})["latency"], 0);
    EXPECT_EQ(playReport({song, "--no-unicode"})["latency"], 0);
}

TEST_F(PlaySession, TakesAnyRateAndBlock)
{
    for (const char* rate : {"44100", "48000", "96000"})
        for (const char* block : {"1", "333", "512", "65536"}) {
            const auto json = playReport({song, "--rate", rate, "--block", block});
            EXPECT_EQ(json["notes"]["midiOut"], json["notes"]["sent"]) << rate << " " << block;
        }
}

TEST_F(PlaySession, ShowsWhatACrowdedBlockLoses)
{
    // Of 101 notes at once the plug-in's queue drops the first hundred.
    MidiTrack track;
    for (int i = 0; i < 101; ++i)
        track.noteOn(0, 3, i, 100);
    const auto json = playReport({folder.write("crowd.mid", midiFile(480, track))});
    EXPECT_EQ(json["notes"]["sent"]["noteOns"][3], 101);
    EXPECT_EQ(json["notes"]["editor"]["noteOns"][3], 101);
    EXPECT_EQ(json["notes"]["midiOut"]["noteOns"][3], 1);
    EXPECT_EQ(json["notes"]["lost"], 100);
    EXPECT_EQ(json["notes"]["crowdedBlocks"], 1);
}

TEST_F(PlaySession, WritesWhatLeftAsAMidiFile)
{
    const auto file = folder.file("out.mid");
    const auto json = playReport({song, "--rate", "48000", "--block", "512", "--midi-out", file});
    EXPECT_EQ(json["midiFile"], file);
    const Song out(file);
    ASSERT_EQ(out.notes().size(), 4U);
    EXPECT_TRUE(out.programChanges().empty());
    EXPECT_EQ(out.notes()[0].channel, 0);
    EXPECT_EQ(out.notes()[0].pitch, 60);
    EXPECT_EQ(out.notes()[0].velocity, 127); // any velocity becomes on or off
    EXPECT_EQ(out.notes()[1].channel, 9);
    EXPECT_FALSE(out.notes()[2].on);
    // 12 s are sample 576,000, the first of a block of 512.
    EXPECT_EQ(out.tempo().sampleAt(out.notes()[2].pulse, 48000), 576000);
    EXPECT_FALSE(out.notes()[3].on);
}

TEST_F(PlaySession, RendersWhatLeftAsAudio)
{
    const auto file = folder.file("out.wav");
    const auto json = playReport({song, "--audio", file});
    EXPECT_EQ(json["audio"]["file"], file);
    EXPECT_EQ(json["audio"]["copiedProgramChanges"], 1);
    EXPECT_GT(json["audio"]["seconds"], 12);
    const auto measures = measureWavFile(file);
    EXPECT_GT(measures.rms, 0.0005);
    EXPECT_LT(measures.peak, 1);
    // The MIDI file that was rendered is gone.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.file("")), {}), 2);
}

TEST_F(PlaySession, WritesAReportForPeople)
{
    const auto outcome = runPlay({song});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("song.mid, 0:12\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("4 events sent, 4 left through \"Midi Out\": nothing was lost"));
}

TEST_F(PlaySession, TakesTheSongsTimeInRealtime)
{
    // Half a second and the half second after it.
    const auto quick = folder.write(
        "quick.mid", midiFile(480, MidiTrack().noteOn(0, 0, 60, 1).noteOff(480, 0, 60, 0)));
    const auto begin = std::chrono::steady_clock::now();
    playReport({quick, "--realtime"});
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(passed.count(), 0.98);
}

TEST(PlaySongs, SendsEveryNoteOnceAndInOrder)
{
    if (!std::filesystem::is_directory(SONGS_FOLDER))
        GTEST_SKIP() << "the songs are not installed on this machine";
    const ScratchFolder folder;
    for (const char* name : {"keep_on_rolling", // 12,192 notes, the most, many in running status
                             "be_sharp_bw_redfarn",  // ends notes by velocity 0
                             "midnight_snow_run",    // 65 changes of tempo
                             "boogi_marabi_redfarn", // 29 notes at once, the most
                             "busy_schedule",        // 17 tracks, the most
                             "ttsong_iii_imuh3"}) {  // no tempo
        const auto song = std::filesystem::path(SONGS_FOLDER) / (std::string(name) + ".mid");
        const auto json = playReport({song.string(), "--midi-out", folder.file("out.mid")});
        const auto& notes = json["notes"];
        EXPECT_EQ(notes["editor"], notes["sent"]) << name;
        ASSERT_EQ(notes["crowdedBlocks"], 0) << name;
        EXPECT_EQ(notes["lost"], 0) << name;

        const Song in(song.string());
        const Song out(folder.file("out.mid"));
        ASSERT_EQ(out.notes().size(), in.notes().size()) << name;
        for (size_t i = 0; i < in.notes().size(); ++i) {
            const auto& sent = in.notes()[i];
            const auto& left = out.notes()[i];
            ASSERT_EQ(left.channel, sent.channel) << name << " note " << i;
            ASSERT_EQ(left.pitch, sent.pitch) << name << " note " << i;
            ASSERT_EQ(left.on, sent.on) << name << " note " << i;
            ASSERT_EQ(left.velocity, sent.on ? 127 : 0) << name << " note " << i;
        }
    }
}
