// The selected track and the editor's part follow each other, in the built program and plug-in.
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>

using doubles::runPlay;
using doubles::Words;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Json = nlohmann::json;
using Numbers = std::vector<int>;

constexpr int kNothing = 0; ///< for null: no channel was told, or no track is selected

Json tracks(const Words& arguments)
{
    return doubles::playReport(arguments)["tracks"];
}

Json demo(const Words& host, const Words& more = {})
{
    auto arguments = host;
    arguments.insert(arguments.end(), {"--tracks", "demo"});
    arguments.insert(arguments.end(), more.begin(), more.end());
    return tracks(arguments);
}

Numbers numbers(const Json& list, const char* key)
{
    Numbers result;
    for (const auto& entry : list)
        result.push_back(entry[key].is_null() ? kNothing : entry[key].get<int>());
    return result;
}

/** The parts that made the host select a track when they were picked. */
Numbers followedParts(const Json& report)
{
    Numbers result;
    for (const auto& choice : report["choices"])
        if (choice["selects"])
            result.push_back(choice["part"]);
    return result;
}

const Words kNewer{"--host", "nuendo:6.5.0"};
const Words kOlder{"--host", "cubase:7.4.0"};

} // namespace

TEST(PlayTracks, NewerHostIsFollowedThroughItsRack)
{
    const auto report = demo(kNewer);
    // Track 4 plays through another plug-in, no rack entry feeds 6, and 7 and 8 have no MIDI.
    EXPECT_THAT(numbers(report["selections"], "track"), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(numbers(report["selections"], "toldChannel"),
                ElementsAre(10, 2, 4, kNothing, 5, kNothing, kNothing, kNothing, 2));
    EXPECT_THAT(numbers(report["selections"], "shownPart"),
                ElementsAre(10, 2, 4, 4, 5, 5, 5, 5, 2));
}

TEST(PlayTracks, OlderHostIsFollowedThroughTheTextsOfItsOutputs)
{
    const auto report = demo(kOlder);
    // Track 3 is no MIDI track, and the text of track 5 lacks the separator.
    EXPECT_THAT(numbers(report["selections"], "toldChannel"),
                ElementsAre(10, 2, kNothing, kNothing, kNothing, 6, kNothing, kNothing, 2));
    EXPECT_THAT(numbers(report["selections"], "shownPart"),
                ElementsAre(10, 2, 2, 2, 2, 6, 6, 6, 2));
}

TEST(PlayTracks, FollowThePartThatTheEditorShows)
{
    // Track 3 is selected first. Of the two tracks on channel 2 the first one follows.
    const auto newer = demo(kNewer, {"--select", "3"});
    EXPECT_THAT(numbers(newer["choices"], "part"),
                ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16));
    EXPECT_THAT(numbers(newer["choices"], "track"),
                ElementsAre(3, 2, 2, 3, 5, 5, 5, 5, 5, 1, 1, 1, 1, 1, 1, 1));
    EXPECT_THAT(followedParts(newer), ElementsAre(2, 4, 5, 10));
    const auto older = demo(kOlder, {"--select", "3"});
    EXPECT_THAT(numbers(older["choices"], "track"),
                ElementsAre(3, 2, 2, 2, 2, 6, 6, 6, 6, 1, 1, 1, 1, 1, 1, 1));
    EXPECT_THAT(followedParts(older), ElementsAre(2, 6, 10));
}

TEST(PlayTracks, StayWhereThePartIsPlayedAlready)
{
    // Track 9 plays on channel 2 as track 2 does, but is the one that is selected.
    const auto report = demo(kNewer, {"--select", "9"});
    EXPECT_THAT(followedParts(report), ElementsAre(4, 5, 10));
    EXPECT_EQ(report["choices"][1]["track"], 9);
}

TEST(PlayTracks, GenerationGoesByTheHostsNameAndVersion)
{
    const auto toldOfTrack3 = [](const Words& host) {
        return numbers(demo(host, {"--select", "3"})["selections"], "toldChannel");
    };
    for (const char* newer : {"nuendo:6.5.0", "nuendo:7.0.0", "cubase:7.5.0", "cubase:7.5.1",
                              "cubase:8.0.0", "cubase-artist:7.5.0", "cubase-elements:7.5.0"})
        EXPECT_THAT(toldOfTrack3({"--host", newer}), ElementsAre(4)) << newer;
    for (const char* older :
         {"nuendo:6.4.9", "nuendo:6.5", "cubase:7.4.0", "cubase:7.4.9", "cubase:7.5",
          "cubase-ai:7.0.0", "cubase-le:9.0.0", "standalone:1.0.0", "older"})
        EXPECT_THAT(toldOfTrack3({"--host", older}), ElementsAre(kNothing)) << older;
}

TEST(PlayTracks, HostWithoutUnicodeIsAnOlderOneAndIsFollowedAsSuch)
{
    // Its version text is packed two bytes to a unit, so that no unit is a digit.
    for (const Words& host :
         {Words{"--host", "nuendo:6.5.0", "--no-unicode"}, Words{"--host", "older"}}) {
        const auto report = demo(host);
        EXPECT_THAT(numbers(report["selections"], "toldChannel"),
                    ElementsAre(10, 2, kNothing, kNothing, kNothing, 6, kNothing, kNothing, 2))
            << host.back();
        EXPECT_THAT(followedParts(report), ElementsAre(6, 10)) << host.back();
    }
}

TEST(PlayTracks, AreReadFromAFile)
{
    const doubles::ScratchFolder folder;
    // Of the rack entries that feed a track the first one with a plug-in decides.
    const auto file = folder.write("project.json", R"({
        "tracks": [{"type": "instrument", "name": "Fl\u00f6te", "channel": 16},
                   {"type": "midi", "name": "Oboe", "channel": 8}],
        "rack": [{"name": "Empty", "feeds": ["Fl\u00f6te", "Oboe"]},
                 {"name": "Sampler", "plugIn": "Sampler", "feeds": ["Oboe"]},
                 {"name": "RDL", "plugIn": "The RDL3/RDL5 VST 1.0",
                  "feeds": ["Fl\u00f6te", "Oboe"]}]})");
    const auto report = tracks({"--host", "cubase:7.5.1", "--tracks", file});
    EXPECT_THAT(numbers(report["selections"], "toldChannel"), ElementsAre(16, kNothing));
    EXPECT_THAT(followedParts(report), ElementsAre(16));
    EXPECT_EQ(report["choices"][15]["track"], 1);
    EXPECT_THAT(runPlay({"--tracks", file}).out,
                HasSubstr("  track 1 \"Fl\xC3\xB6te\"         instrument  channel 16  to \"\"\n"));
}

TEST(PlayTracks, CanBeNone)
{
    const doubles::ScratchFolder folder;
    const auto report = tracks({"--tracks", folder.write("project.json", R"({"tracks": []})")});
    EXPECT_TRUE(report["selections"].empty());
    EXPECT_TRUE(followedParts(report).empty());
    EXPECT_TRUE(report["choices"][15]["track"].is_null());
}

TEST(PlayTracks, CanBeTwoThousandWithTwoHundredInstruments)
{
    auto list = Json::array();
    auto rack = Json::array();
    for (int i = 0; i < 2000; ++i)
        list.push_back({{"type", "midi"}, {"name", std::to_string(i)}, {"channel", i / 125 + 1}});
    for (int i = 0; i < 199; ++i)
        rack.push_back({{"name", "Sampler"}, {"plugIn", "Sampler"}, {"feeds", Json::array()}});
    rack.push_back({{"name", "RDL"}, {"plugIn", "RDL3/RDL5 VST"}, {"feeds", {"0", "1999"}}});
    const doubles::ScratchFolder folder;
    const auto file = folder.write("project.json", Json{{"tracks", list}, {"rack", rack}}.dump());
    const auto report = tracks({"--tracks", file, "--select", "1999", "--select", "2000"});
    EXPECT_THAT(numbers(report["selections"], "toldChannel"), ElementsAre(kNothing, 16));
    EXPECT_THAT(followedParts(report), ElementsAre(1, 16));
    EXPECT_EQ(report["choices"][15]["track"], 2000);
}

TEST(PlayTracks, AreTablesForPeople)
{
    const auto newer = runPlay({"--host", "nuendo:6.5.0", "--tracks", "demo", "--select", "3"});
    EXPECT_EQ(newer.status, 0) << newer.err;
    EXPECT_THAT(newer.out, HasSubstr("Host          Nuendo, Version 6.5.0, Unicode\n"));
    EXPECT_THAT(newer.out, HasSubstr("  The host selects        The editor\n"
                                     "  track 3 \"Lead\"          is told channel 4 and shows "
                                     "Part 4\n\n"
                                     "  The editor picks        The host\n"
                                     "  Part 1                  stays at track 3 \"Lead\"\n"
                                     "  Part 2                  selects track 2 \"Bass\"\n"));
    const auto older = runPlay({"--host", "cubase:7.4.0", "--tracks", "demo", "--select", "3"});
    EXPECT_EQ(older.status, 0) << older.err;
    EXPECT_THAT(older.out, HasSubstr("Host          Cubase, Version 7.4.0, Unicode\n"));
    EXPECT_THAT(older.out, HasSubstr("  track 3 \"Lead\"          is told nothing and still shows "
                                     "Part 1\n"));
    EXPECT_THAT(older.out, HasSubstr("  Part 4                  stays at track 2 \"Bass\"\n"));
}

TEST(PlayTracks, RefuseWhatTheyCannotShow)
{
    const doubles::ScratchFolder folder;
    using doubles::expectSentence;
    expectSentence(runPlay({"--tracks", "demo", "--select", "0"}),
                   "There is no track 0; the project has 9.");
    expectSentence(runPlay({"--tracks", "demo", "--select", "10"}),
                   "There is no track 10; the project has 9.");
    expectSentence(runPlay({"--tracks", "demo", "--host", "plain"}),
                   "The host shows its tracks to no plug-in");
    expectSentence(runPlay({"--tracks", folder.write("a.json", "{")}), "is not JSON");
    for (const Words& words :
         {Words{"--select", "3"}, Words{"--tracks", "demo", "--select", "x"}, Words{"--tracks"}}) {
        const auto outcome = runPlay(words);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_NE(outcome.err, "");
    }
}
