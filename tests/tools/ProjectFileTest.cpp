// The projects that play's host opens.
#include "tools/play/ProjectFile.h"
#include "tests/tools/ScratchFolder.h"
#include "tools/common/Failure.h"

#include <gmock/gmock.h>

using namespace Steinberg::Vst::play;
using Steinberg::Vst::tools::Failure;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Eq;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::Optional;
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

} // namespace

TEST_F(ProjectFileTest, ReadProjectReadsTracksAndRack)
{
    const auto project = read(R"({
        "rack": [{"name": "RDL 1", "plugIn": "RDL3/RDL5 VST", "feeds": ["Lead", "Drums"]},
                 {"name": "Empty"}],
        "tracks": [{"type": "midi", "name": "Drums", "output": "RDL 1 - X", "channel": 16},
                   {"type": "instrument", "name": "Lead", "channel": 1},
                   {"type": "audio", "name": "Vocals"},
                   {"type": "group", "name": ""}]})");
    using Type = Project::TrackType;
    EXPECT_THAT(project.tracks, ElementsAre(FieldsAre(Type::midi, "Drums", "RDL 1 - X", 15),
                                            FieldsAre(Type::instrument, "Lead", "", 0),
                                            FieldsAre(Type::audio, "Vocals", "", 0),
                                            FieldsAre(Type::group, "", "", 0)));
    EXPECT_THAT(project.rack, ElementsAre(FieldsAre("RDL 1", Optional(std::string("RDL3/RDL5 VST")),
                                                    ElementsAre(1U, 0U)),
                                          FieldsAre("Empty", Eq(std::nullopt), IsEmpty())));
}

TEST_F(ProjectFileTest, ReadProjectReadsAProjectWithoutTracks)
{
    EXPECT_TRUE(read(R"({"tracks": []})").tracks.empty());
}

TEST_F(ProjectFileTest, DemoProjectHasEveryTypeOfTrack)
{
    const auto project = demoProject();
    EXPECT_EQ(project.tracks.size(), 9U);
    EXPECT_EQ(project.tracks[2].type, Project::TrackType::instrument);
    EXPECT_EQ(project.rack.size(), 2U);
}

TEST_F(ProjectFileTest, ReadProjectSaysWhereAFileIsNoJson)
{
    EXPECT_EQ(complaint(""), " is not JSON; the fault shows in line 1.");
    EXPECT_EQ(complaint("{\"tracks\": [\n\n}"), " is not JSON; the fault shows in line 3.");
    EXPECT_EQ(complaint("{\"tracks\": [\n{\"name\": \"\xFF\"}]}"),
              " is not JSON; the fault shows in line 2.");
    EXPECT_EQ(complaint(std::string(100000, '[')), " is not JSON; the fault shows in line 1.");
}

TEST_F(ProjectFileTest, ReadProjectSaysWhatIsWrongInAProject)
{
    EXPECT_EQ(complaint("[]"), " is not an object in braces.");
    EXPECT_EQ(complaint("{}"), " has no \"tracks\".");
    EXPECT_EQ(complaint("{\"tracks\": {}}"), " has \"tracks\" that are not a list in brackets.");
    EXPECT_EQ(complaint("{\"tracks\": [], \"rack\": 7}"),
              " has \"rack\" that are not a list in brackets.");
    EXPECT_EQ(complaint("{\"tracks\": [], \"tempo\": 120}"),
              " has an entry \"tempo\", which means nothing here.");
}

TEST_F(ProjectFileTest, ReadProjectSaysWhatIsWrongWithATrack)
{
    const auto track = [&](const std::string& tracks) {
        return complaint("{\"tracks\": [" + tracks + "]}");
    };
    EXPECT_EQ(track("7"), ": track 1 is not an object in braces.");
    EXPECT_EQ(track(R"({"name": "A"})"), ": track 1 has no \"type\".");
    EXPECT_EQ(track(R"({"type": "midi"})"), ": track 1 has no \"name\".");
    EXPECT_EQ(track(R"({"type": "drum", "name": "A"})"),
              ": track 1 has the type \"drum\"; a type is \"midi\", \"instrument\", \"audio\" or "
              "\"group\".");
    EXPECT_EQ(track(R"({"type": 1, "name": "A"})"),
              ": track 1 has a \"type\" that is not a text in quotes.");
    EXPECT_EQ(track(R"({"type": "midi", "name": "A", "output": null})"),
              ": track 1 has a \"output\" that is not a text in quotes.");
    EXPECT_EQ(track(R"({"type": "midi", "name": "A", "chanel": 1})"),
              ": track 1 has an entry \"chanel\", which means nothing here.");
    EXPECT_EQ(track(R"({"type": "midi", "name": "A"}, {"type": "audio", "name": "A"})"),
              ": track 2 has the name of another track, \"A\".");
    for (const std::string channel :
         {"0", "17", "-1", "1.5", "\"1\"", "null", "4294967297", "18446744073709551615", "1e3"})
        EXPECT_EQ(track(R"({"type": "midi", "name": "A", "channel": )" + channel + "}"),
                  ": track 1 has a \"channel\" that is not a whole number from 1 to 16.")
            << channel;
}

TEST_F(ProjectFileTest, ReadProjectSaysWhatIsWrongInTheRack)
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

TEST_F(ProjectFileTest, ReadProjectRefusesAFileThatIsMissingOrNone)
{
    EXPECT_THROW(readProject(folder.file("none.json")), Failure);
    EXPECT_THROW(readProject(folder.file("")), Failure);
}
