// The host's ports, chosen in the simulated editor, through the built program and plug-in.
#include "tests/tools/PlayProgram.h"

#include <gmock/gmock.h>

using doubles::runPlay;
using doubles::Words;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

Json ports(Words arguments)
{
    arguments.emplace_back("--ports");
    return doubles::playReport(arguments)["ports"];
}

Texts ids(const Json& list)
{
    Texts result;
    for (const auto& entry : list)
        result.push_back(entry["id"]);
    return result;
}

/** IDs of the ports that the host's own lists do not show. */
Texts hidden(const Json& view)
{
    Texts result;
    for (const auto& port : view["host"])
        if (!port["displayed"])
            result.push_back(port["id"]);
    return result;
}

Texts texts(const Json& list)
{
    return list.get<Texts>();
}

} // namespace

TEST(PlayPorts, ListsWhatTheEditorAndTheHostShow)
{
    const auto report = ports({"--host", "cubase:7.5.1"});
    EXPECT_EQ(report["ready"], true);
    ASSERT_EQ(report["views"].size(), 1U);
    const auto& view = report["views"][0];
    // Not the hidden input, and no output.
    EXPECT_THAT(ids(view["editorAudio"]), ElementsAre("main-l", "main-r", "sub-l", "sub-r", "mic"));
    EXPECT_EQ(view["editorAudio"][0]["name"], "Tavrin RDL3/RDL5 Main L");
    // No inputs, hidden ports, virtual ports or proxies.
    EXPECT_THAT(ids(view["editorMidi"]), ElementsAre("out-1", "organ"));
    EXPECT_THAT(hidden(view), ElementsAre("talkback", "attic"));
    EXPECT_EQ(view["holdsAudio"], false);
    EXPECT_THAT(texts(view["audioInputs"]), ElementsAre("", "", "", ""));
    EXPECT_EQ(view["midiOutput"], "");
    EXPECT_EQ(ids(report["secondEditorAudio"]), ids(view["editorAudio"]));
    Texts heard;
    for (const auto& port : view["host"])
        if (port["inAllMidiInputs"])
            heard.push_back(port["id"]);
    EXPECT_THAT(heard, ElementsAre("in-1", "keys")) << "not the instrument's fourth port";
}

TEST(PlayPorts, StayInTheEditorsListWhileThePlugInHoldsThem)
{
    const auto report = ports({"--connect-audio", "main-l,main-r,talkback,"});
    ASSERT_EQ(report["views"].size(), 2U);
    const auto& view = report["views"][1];
    EXPECT_THAT(hidden(view), ElementsAre("main-l", "main-r", "talkback", "attic"));
    EXPECT_THAT(ids(view["editorAudio"]), ElementsAre("main-l", "main-r", "sub-l", "sub-r", "mic"));
    // The host's user hid the talkback microphone, so the plug-in does not get it.
    EXPECT_THAT(texts(view["audioInputs"]), ElementsAre("main-l", "main-r", "", ""));
    EXPECT_EQ(view["holdsAudio"], true);
    EXPECT_THAT(ids(report["secondEditorAudio"]), ElementsAre("sub-l", "sub-r", "mic"));
}

TEST(PlayPorts, ComeBackWhenThePlugInLetsThemGo)
{
    const auto report = ports({"--connect-audio", "main-l,main-r,,", "--connect-audio",
                               ",,sub-l,main-r", "--connect-audio", ",,,"});
    ASSERT_EQ(report["views"].size(), 4U);
    const auto& second = report["views"][2];
    EXPECT_THAT(hidden(second), ElementsAre("main-r", "sub-l", "talkback", "attic"));
    EXPECT_THAT(texts(second["audioInputs"]), ElementsAre("", "", "sub-l", "main-r"));
    const auto& third = report["views"][3];
    EXPECT_THAT(hidden(third), ElementsAre("talkback", "attic"));
    EXPECT_THAT(texts(third["audioInputs"]), ElementsAre("", "", "", ""));
    EXPECT_EQ(third["holdsAudio"], false);
    EXPECT_EQ(report["secondEditorAudio"].size(), 5U);
}

TEST(PlayPorts, FeedTwoChannelsOnlyWhenTheyWereHeldBefore)
{
    const auto report =
        ports({"--connect-audio", "mic,mic,,", "--connect-audio", "mic,mic,nobody,speakers"});
    EXPECT_THAT(texts(report["views"][1]["audioInputs"]), ElementsAre("mic", "", "", ""));
    EXPECT_THAT(texts(report["views"][2]["audioInputs"]), ElementsAre("mic", "mic", "", ""));
}

TEST(PlayPorts, ConnectTheMidiOutputByID)
{
    Words arguments;
    for (const char* id :
         {"organ", "network", "loop", "attic", "keys", "out-1", "nobody", "out-1", ""})
        arguments.insert(arguments.end(), {"--connect-midi", id});
    const auto report = ports(arguments);
    Texts connected;
    for (const auto& view : report["views"])
        connected.push_back(view["midiOutput"]);
    // Unlisted proxies and hidden ports can be chosen; virtual ports and inputs cannot.
    EXPECT_THAT(connected,
                ElementsAre("", "organ", "network", "", "attic", "", "out-1", "", "out-1", ""));
}

TEST(PlayPorts, AreTheSameInHostsWithoutUnicode)
{
    for (const Words& host :
         {Words{"--no-unicode"}, Words{"--host", "older"}, Words{"--host", "standalone"}}) {
        auto arguments = host;
        arguments.insert(arguments.end(), {"--connect-audio", "main-l,,,mic"});
        const auto report = ports(arguments);
        const auto& view = report["views"][1];
        EXPECT_THAT(ids(view["editorAudio"]),
                    ElementsAre("main-l", "main-r", "sub-l", "sub-r", "mic"))
            << host.back();
        EXPECT_EQ(view["editorAudio"][4]["name"], "Microphone") << host.back();
        EXPECT_THAT(texts(view["audioInputs"]), ElementsAre("main-l", "", "", "mic"))
            << host.back();
    }
}

TEST(PlayPorts, AreNoneInAPlainHost)
{
    const auto report = ports({"--host", "plain", "--connect-audio", "main-l,,,"});
    EXPECT_EQ(report["ready"], false);
    ASSERT_EQ(report["views"].size(), 2U);
    for (const auto& view : report["views"]) {
        EXPECT_THAT(view["host"], IsEmpty());
        EXPECT_THAT(view["editorAudio"], IsEmpty());
        EXPECT_THAT(view["editorMidi"], IsEmpty());
        EXPECT_EQ(view["holdsAudio"], false);
    }
}

TEST(PlayPorts, AreATableForPeople)
{
    const auto outcome = runPlay({"--connect-audio", "main-l,main-r,,", "--connect-midi", "organ"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto before = outcome.out.find("The ports at first\n");
    const auto after =
        outcome.out.find("The ports after the editor connects audio \"main-l,main-r,,\"\n");
    const auto last = outcome.out.find("The ports after the editor connects MIDI \"organ\"\n");
    ASSERT_LT(before, after);
    ASSERT_LT(after, last);
    ASSERT_NE(last, std::string::npos);
    const auto line = [&](size_t from, const std::string& beginning) {
        const auto at = outcome.out.find(beginning, from);
        return outcome.out.substr(at, outcome.out.find('\n', at) - at);
    };
    const std::string mainLeft = "Tavrin RDL3/RDL5 Main L   main-l    audio in           ";
    EXPECT_EQ(line(before, "Tavrin RDL3/RDL5 Main L"), mainLeft + "shown                   1");
    EXPECT_EQ(line(after, "Tavrin RDL3/RDL5 Main L"),
              mainLeft + "hidden                  1              bus 1 left");
    EXPECT_EQ(line(after, "Talkback"), "Talkback                  talkback  audio in           "
                                       "hidden                  -");
    EXPECT_EQ(line(before, "Tavrin RDL3/RDL5 Port4"),
              "Tavrin RDL3/RDL5 Port4    in-4      MIDI in            shown, out of All MIDI  -");
    EXPECT_EQ(line(last, "Organ"), "Organ                     organ     MIDI out           "
                                   "shown                   2              MIDI output");
    EXPECT_THAT(outcome.out, HasSubstr("Ports         ready to be connected: yes\n"));
    EXPECT_THAT(outcome.out, HasSubstr("The editor of a second plug-in lists 3 audio inputs: "
                                       "sub-l, sub-r, mic\n"));
}

using PlayPortsAndSong = doubles::PlayTest;

TEST_F(PlayPortsAndSong, GoBeforeTheSongInOneReport)
{
    const auto both = report({"--ports", "--tracks", "demo"});
    EXPECT_EQ(both["song"], "song.mid");
    EXPECT_EQ(both["ports"]["views"].size(), 1U);
    EXPECT_EQ(both["tracks"]["selections"].size(), 9U);
    const auto alone = report({});
    EXPECT_FALSE(alone.contains("ports"));
    EXPECT_FALSE(alone.contains("tracks"));
    const auto text = runPlay({song, "--ports"}).out;
    EXPECT_LT(text.find("The ports at first"), text.find("song.mid"));
    EXPECT_THAT(runPlay({song}).out, Not(HasSubstr("The ports at first")));
}

TEST(PlayPorts, RefuseAListThatDoesNotNameFour)
{
    for (const std::string list : {"", "main-l", "main-l,main-r", "a,b,c", "a,b,c,d,e", ",,,,"})
        doubles::expectSentence(runPlay({"--connect-audio", list}),
                                "\"" + list + "\" does not name four");
}
