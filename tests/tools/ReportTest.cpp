#include "tools/play/output/Report.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using namespace Steinberg;
using namespace Steinberg::Vst;
using namespace Steinberg::Vst::play;
using testing::HasSubstr;
using testing::Not;

namespace {

Report smallReport()
{
    Report report;
    report.plugIn = "RDL3/RDL5 VST 1.6.6";
    report.vendor = "Tavrin Corporation";
    report.host = "Cubase, Version 7.5.1, Unicode";
    report.binding = "loaded by the plug-in from /somewhere";
    report.buses = {{"RDL3/RDL5 1", true, true, 2}, {"Midi In", false, false, 16}};
    report.latency = 220;
    report.song = "song.mid";
    report.settings = {44100, 512, false};
    report.played.sent.ons[9] = 3;
    report.played.sent.offs[9] = 2;
    report.played.left.ons[9] = 1;
    report.played.left.offs[9] = 0;
    report.played.samples = 44100 * 65;
    report.played.blocks = 5600;
    report.played.crowdedBlocks = 1;
    report.played.process.add(0.000125);
    report.stateSize = 1234;
    report.stateCameBack = true;
    return report;
}

} // namespace

TEST(Report, TextOfSaysWhatHappened)
{
    const auto text = textOf(smallReport());
    EXPECT_THAT(text, HasSubstr("song.mid, 1:05\n"));
    EXPECT_THAT(text, HasSubstr("RDL3/RDL5 VST 1.6.6 by Tavrin Corporation"));
    EXPECT_THAT(text, HasSubstr("\"RDL3/RDL5 1\" out (stereo), \"Midi In\" in (16 MIDI channels)"));
    EXPECT_THAT(text, HasSubstr("44,100 Hz, blocks of 512 samples, latency 220 samples (5.0 ms)"));
    EXPECT_THAT(text, HasSubstr("10                       3/2           1/0"));
    EXPECT_THAT(text, HasSubstr("5 events sent, 1 left through \"Midi Out\": 4 were lost"));
    EXPECT_THAT(text, HasSubstr("1 block had more than 100 events"));
    EXPECT_THAT(text, HasSubstr("1,234 bytes; a second instance restored them and saved the same"));
    EXPECT_THAT(text, HasSubstr("at most 0.125 ms of the 11.6 ms"));
    EXPECT_THAT(text, Not(HasSubstr("editor got")));
    auto report = smallReport();
    report.stateCameBack = false;
    EXPECT_THAT(textOf(report), HasSubstr("restored them but saved others"));
}

TEST(Report, TextOfAddsWhatTheEditorLibraryTells)
{
    auto report = smallReport();
    report.library = Report::LibrarySide{1, report.played.sent, 0};
    const auto text = textOf(report);
    EXPECT_THAT(text, HasSubstr("the plug-in took it for the maker's stand-alone host"));
    EXPECT_THAT(text, HasSubstr("10                       3/2           3/2           1/0"));
}

TEST(Report, TextOfAndJsonOfLiveMusicTellWhatLeftAtTheInstrumentsPort)
{
    auto report = smallReport();
    SimulatorControl::MidiPort port;
    port.state = SimulatorControl::MidiPort::State::open;
    port.name = "organ:in";
    port.left = 12;
    port.notesLeft = 4;
    port.lost = 1;
    port.arrived = 3;
    report.port = port;
    report.copiedProgramChanges = 5;
    const auto text = textOf(report);
    EXPECT_THAT(text, HasSubstr("5 events sent, 4 left at the MIDI port: 1 were lost\n"));
    EXPECT_THAT(text, HasSubstr("MIDI port     organ:in; 12 messages left, 1 lost, 3 arrived\n"
                                "              5 program changes were copied"));
    const auto json = nlohmann::json::parse(jsonOf(report));
    EXPECT_EQ(json["notes"]["lost"], 1);
    EXPECT_EQ(json["port"]["name"], "organ:in");
    EXPECT_EQ(json["port"]["arrived"], 3);

    report.port->state = SimulatorControl::MidiPort::State::none;
    report.port->reason = "it is gone";
    EXPECT_THAT(textOf(report), HasSubstr("MIDI port     none: it is gone; "));
}

TEST(Report, JsonOfIsOneObject)
{
    auto report = smallReport();
    report.library = Report::LibrarySide{0, report.played.sent, 7};
    const auto json = nlohmann::json::parse(jsonOf(report));
    EXPECT_EQ(json["sampleRate"], 44100);
    EXPECT_EQ(json["latency"], 220);
    EXPECT_EQ(json["hostType"], 0);
    EXPECT_EQ(json["notes"]["sent"]["noteOns"][9], 3);
    EXPECT_EQ(json["notes"]["editor"]["noteOffs"][9], 2);
    EXPECT_EQ(json["notes"]["midiOut"]["noteOns"][9], 1);
    EXPECT_EQ(json["notes"]["lost"], 4);
    EXPECT_EQ(json["notes"]["crowdedBlocks"], 1);
    EXPECT_EQ(json["state"]["bytes"], 1234);
    EXPECT_EQ(json["state"]["cameBack"], true);
    EXPECT_EQ(json["buses"][0]["channels"], 2);
    EXPECT_FALSE(json.contains("audio"));
}

TEST(Report, JsonOfStaysJsonWithNamesThatAreNotUtf8)
{
    auto report = smallReport();
    report.song = "\xFF\xFE.mid";
    EXPECT_FALSE(nlohmann::json::parse(jsonOf(report))["song"].get<std::string>().empty());
}

TEST(Report, GroupedPutsACommaAtEachThousand)
{
    EXPECT_EQ(grouped(0), "0");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(1234567), "1,234,567");
    EXPECT_EQ(grouped(-123), "-123");
    EXPECT_EQ(grouped(-1234), "-1,234");
}
