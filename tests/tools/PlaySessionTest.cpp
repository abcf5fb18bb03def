// The built program, the built plug-in and the simulated editor library together.
#include "tests/tools/MidiBytes.h"
#include "tests/tools/PlayProgram.h"
#include "tools/play/music/Song.h"
#include "tools/play/output/WavFile.h"

#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <iterator>

using namespace Steinberg::Vst::play;
using doubles::midiFile;
using doubles::MidiTrack;
using doubles::playReport;
using doubles::ScratchFolder;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::HasSubstr;

using Json = nlohmann::json;
using PlaySession = doubles::PlayTest;

TEST_F(PlaySession, PlaysThroughTheInstalledLibrary)
{
    const auto json = report({});
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
    EXPECT_EQ(json["buses"], Json::parse(R"([
        {"name": "RDL3/RDL5 1", "type": "audio", "direction": "output", "channels": 2},
        {"name": "RDL3/RDL5 2", "type": "audio", "direction": "output", "channels": 2},
        {"name": "Midi In", "type": "event", "direction": "input", "channels": 16},
        {"name": "Midi Out", "type": "event", "direction": "output", "channels": 16}])"));
}

TEST_F(PlaySession, PlaysThroughTheLibraryOfTheHostsService)
{
    const auto json = playReport({song, "--binding", "service", "--library", SIMULATOR_LIBRARY},
                                 doubles::playOnThisMachine);
    EXPECT_THAT(json["binding"].get<std::string>(), HasSubstr("lent by the host's service from "));
    EXPECT_EQ(json["notes"]["editor"], json["notes"]["sent"]);
    EXPECT_EQ(json["notes"]["midiOut"], json["notes"]["sent"]);
    EXPECT_TRUE(json["state"]["cameBack"]);
}

TEST_F(PlaySession, IsTakenForTheHostThatItPretendsToBe)
{
    for (const auto& [host, type] :
         {std::pair("cubase:7.5.1", 0), std::pair("nuendo:6.5.0", 0), std::pair("older", 0),
          std::pair("cubase-le:5.0.0", 0), std::pair("standalone", 1), std::pair("plain", 2)})
        EXPECT_EQ(report({"--host", host})["hostType"], type) << host;
    EXPECT_EQ(report({"--host", "cubase", "--no-unicode"})["hostType"], 0);
}

TEST_F(PlaySession, TellsALatencyOfOneMillisecondInAUnicodeHostOnly)
{
    EXPECT_EQ(report({})["latency"], 44);
    EXPECT_EQ(report({"--rate", "96000"})["latency"], 96);
    EXPECT_EQ(report({"--host", "plain"})["latency"], 0);
    EXPECT_EQ(report({"--no-unicode"})["latency"], 0);
}

TEST_F(PlaySession, PlaysAtAnyRateWithAnyBlockSize)
{
    for (const char* rate : {"44100", "48000", "96000"})
        for (const char* block : {"1", "333", "512", "65536"}) {
            const auto notes = report({"--rate", rate, "--block", block})["notes"];
            EXPECT_EQ(notes["midiOut"], notes["sent"]) << rate << " " << block;
        }
}

TEST_F(PlaySession, CountsWhatACrowdedBlockLoses)
{
    // The plug-in's queue holds 100 events. The 101st drops them all.
    MidiTrack track;
    for (int i = 0; i < 101; ++i)
        track.noteOn(0, 3, i, 100);
    const auto notes = playReport({folder.write("crowd.mid", midiFile(480, track))})["notes"];
    EXPECT_EQ(notes["sent"]["noteOns"][3], 101);
    EXPECT_EQ(notes["editor"]["noteOns"][3], 101);
    EXPECT_EQ(notes["midiOut"]["noteOns"][3], 1);
    EXPECT_EQ(notes["lost"], 100);
    EXPECT_EQ(notes["crowdedBlocks"], 1);
}

TEST_F(PlaySession, WritesWhatLeftAsAMidiFile)
{
    const auto file = folder.file("out.mid");
    const auto json = report({"--rate", "48000", "--block", "512", "--midi-out", file});
    EXPECT_EQ(json["midiFile"], file);
    const Song out(file);
    EXPECT_TRUE(out.programChanges().empty());
    // One pulse is one sample. 12 s are sample 576,000, the first of a block of 512. The plug-in
    // sends full velocity for any note-on.
    EXPECT_THAT(out.notes(),
                ElementsAre(FieldsAre(0, 0, 60, 127, true), FieldsAre(0, 9, 36, 127, true),
                            FieldsAre(576000, 0, 60, 0, false),
                            FieldsAre(576000, 9, 36, 0, false)));
}

TEST_F(PlaySession, RendersWhatLeftAsAudio)
{
    const auto file = folder.file("out.wav");
    const auto audio = report({"--audio", file})["audio"];
    EXPECT_EQ(audio["file"], file);
    EXPECT_EQ(audio["copiedProgramChanges"], 1);
    EXPECT_GT(audio["seconds"], 12);
    const auto measures = measureWavFile(file);
    EXPECT_GT(measures.rms, 0.0005);
    EXPECT_LT(measures.peak, 1);
    // The MIDI file that was rendered is gone.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.file("")), {}), 2);
}

TEST_F(PlaySession, TakesTheSongsTimeInRealtime)
{
    // Half a second of song and half a second after it. The last block begins 12 ms before the end.
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
            ASSERT_THAT(out.notes()[i],
                        FieldsAre(testing::_, sent.channel, sent.pitch, sent.on ? 127 : 0, sent.on))
                << name << " note " << i;
        }
    }
}
