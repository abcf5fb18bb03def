// The projects that play's host opens.
#include "tools/play/ProjectFile.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"

#include <gmock/gmock.h>

using namespace Steinberg::Vst::play;
using Steinberg::Vst::tools::Failure;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

namespace {

class ProjectFileTest : public testing::Test {
protected:
    Project read(const std::string& text)
    {
        return readProject(folder.write("project.json", text));
    }

    /** The sentence for a file that is refused, without the file's name. */
    std::string complaint(const std::string& text)
    {
        const auto name = "\"" + folder.file("project.json") + "\"";
        try {
            read(text);
        } catch (const Failure& failure) {
            const std::string sentence = failure.what();
            EXPECT_THAT(sentence, StartsWith(name));
            EXPECT_THAT(sentence, EndsWith("."));
            return sentence.substr(name.size());
        }
        ADD_FAILURE() << "was read: " << text;
        return "";
    }

    doubles::ScratchFolder folder;
};

std::string oneTrack(const std::string& track)
{
    return "{\"tracks\": [" + track + "]}";
}

} // namespace

TEST_F(ProjectFileTest, ReadsTracksAndRack)
{
    const auto project = read(R"({
        "rack": [{"name": "RDL 1", "plugIn": "RDL3/RDL5 VST", "feeds": ["Lead", "Drums"]},
                 {"name": "Empty"}],
        "tracks": [{"type": "midi", "name": "Drums", "output": "RDL 1 - X", "channel": 16},
                   {"type": "instrument", "name": "Lead", "channel": 1},
                   {"type": "audio", "name": "Vocals"},
                   {"type": "group", "name": ""}]})");
    ASSERT_EQ(project.tracks.size(), 4U);
    EXPECT_EQ(project.tracks[0].type, Project::TrackType::midi);
    EXPECT_EQ(project.tracks[0].name, "Drums");
    EXPECT_EQ(project.tracks[0].output, "RDL 1 - X");
    EXPECT_EQ(project.tracks[0].channel, 15);
    EXPECT_EQ(project.tracks[1].type, Project::TrackType::instrument);
    EXPECT_EQ(project.tracks[1].output, "");
    EXPECT_EQ(project.tracks[1].channel, 0);
    EXPECT_EQ(project.tracks[2].type, Project::TrackType::audio);
    EXPECT_EQ(project.tracks[2].channel, 0);
    EXPECT_EQ(project.tracks[3].type, Project::TrackType::group);
    ASSERT_EQ(project.rack.size(), 2U);
    EXPECT_EQ(project.rack[0].name, "RDL 1");
    EXPECT_EQ(project.rack[0].effectType, "RDL3/RDL5 VST");
    EXPECT_THAT(project.rack[0].feeds, ElementsAre(1U, 0U));
    EXPECT_FALSE(project.rack[1].effectType);
    EXPECT_TRUE(project.rack[1].feeds.empty());
}

TEST_F(ProjectFileTest, ReadsAProjectWithoutTracks)
{
    EXPECT_TRUE(read(R"({"tracks": []})").tracks.empty());
}

TEST_F(ProjectFileTest, HasADemoWithEveryTypeOfTrack)
{
    const auto project = demoProject();
    EXPECT_EQ(project.tracks.size(), 9U);
    EXPECT_EQ(project.tracks[2].type, Project::TrackType::instrument);
    EXPECT_EQ(project.rack.size(), 2U);
}

TEST_F(ProjectFileTest, SaysWhereAFileIsNoJson)
{
    EXPECT_EQ(complaint(""), " is not JSON; the fault shows in line 1.");
    EXPECT_EQ(complaint("{\"tracks\": [\n\n}"), " is not JSON; the fault shows in line 3.");
    EXPECT_EQ(complaint("{\"tracks\": [\n{\"name\": \"\xFF\"}]}"),
              " is not JSON; the fault shows in line 2.");
    EXPECT_EQ(complaint(std::string(100000, '[')), " is not JSON; the fault shows in line 1.");
}

TEST_F(ProjectFileTest, RefusesAProjectOfAnotherShape)
{
    EXPECT_EQ(complaint("[]"), " is not an object in braces.");
    EXPECT_EQ(complaint("{}"), " has no \"tracks\".");
    EXPECT_EQ(complaint("{\"tracks\": {}}"), " has \"tracks\" that are not a list in brackets.");
    EXPECT_EQ(complaint("{\"tracks\": [], \"rack\": 7}"),
              " has \"rack\" that are not a list in brackets.");
    EXPECT_EQ(complaint("{\"tracks\": [], \"tempo\": 120}"),
              " has an entry \"tempo\", which means nothing here.");
}

TEST_F(ProjectFileTest, RefusesATrackThatIsNone)
{
    EXPECT_EQ(complaint(oneTrack("7")), ": track 1 is not an object in braces.");
    EXPECT_EQ(complaint(oneTrack(R"({"name": "A"})")), ": track 1 has no \"type\".");
    EXPECT_EQ(complaint(oneTrack(R"({"type": "midi"})")), ": track 1 has no \"name\".");
    EXPECT_EQ(complaint(oneTrack(R"({"type": "drum", "name": "A"})")),
              ": track 1 has the type \"drum\"; a type is \"midi\", \"instrument\", \"audio\" or "
              "\"group\".");
    EXPECT_EQ(complaint(oneTrack(R"({"type": 1, "name": "A"})")),
              ": track 1 has a \"type\" that is not a text in quotes.");
    EXPECT_EQ(complaint(oneTrack(R"({"type": "midi", "name": "A", "output": null})")),
              ": track 1 has a \"output\" that is not a text in quotes.");
    EXPECT_EQ(complaint(oneTrack(R"({"type": "midi", "name": "A", "chanel": 1})")),
              ": track 1 has an entry \"chanel\", which means nothing here.");
    EXPECT_EQ(
        complaint(oneTrack(R"({"type": "midi", "name": "A"}, {"type": "audio", "name": "A"})")),
        ": track 2 has the name of another track, \"A\".");
}

TEST_F(ProjectFileTest, RefusesAChannelThatIsNone)
{
    for (const char* channel :
         {"0", "17", "-1", "1.5", "\"1\"", "null", "4294967297", "18446744073709551615", "1e3"})
        EXPECT_EQ(complaint(oneTrack(R"({"type": "midi", "name": "A", "channel": )" +
                                     std::string(channel) + "}")),
                  ": track 1 has a \"channel\" that is not a whole number from 1 to 16.")
            << channel;
}

TEST_F(ProjectFileTest, RefusesARackThatFeedsNoTrack)
{
    const auto rack = [&](const std::string& entry) {
        return complaint(R"({"tracks": [{"type": "midi", "name": "A"}], "rack": [)" + entry + "]}");
    };
    EXPECT_EQ(rack("\"RDL 1\""), ": rack entry 1 is not an object in braces.");
    EXPECT_EQ(rack("{}"), ": rack entry 1 has no \"name\".");
    EXPECT_EQ(rack(R"({"name": "R"}, {"name": "S", "feeds": ["A", "B"]})"),
              ": rack entry 2 feeds \"B\", which is the name of no track.");
    EXPECT_EQ(rack(R"({"name": "R", "feeds": [1]})"),
              ": rack entry 1 has \"feeds\" that are not names in quotes.");
    EXPECT_EQ(rack(R"({"name": "R", "feeds": "A"})"),
              ": rack entry 1 has \"feeds\" that are not a list in brackets.");
}

TEST_F(ProjectFileTest, NamesAFileThatIsMissingOrNone)
{
    EXPECT_THROW(readProject(folder.file("none.json")), Failure);
    EXPECT_THROW(readProject(folder.file("")), Failure);
}
