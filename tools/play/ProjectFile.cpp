#include "tools/play/ProjectFile.h"

#include "tools/common/Failure.h"
#include "tools/play/basics/FileBytes.h"
#include "tools/play/basics/Wording.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

using Json = nlohmann::ordered_json; // as the reports have it

/** Track 3 is an instrument track. Track 5 plays through the plug-in by the rack only, and track 6
    by the text of its output only. Tracks 2 and 9 share a channel. */
constexpr const char* kDemoProject = R"({
  "tracks": [
    {"type": "midi", "name": "Drums", "output": "RDL 1 - RDL3/RDL5 VST", "channel": 10},
    {"type": "midi", "name": "Bass", "output": "RDL 1 - RDL3/RDL5 VST", "channel": 2},
    {"type": "instrument", "name": "Lead", "output": "RDL 1", "channel": 4},
    {"type": "midi", "name": "Strings", "output": "Sampler 1 - Sampler", "channel": 3},
    {"type": "midi", "name": "Pad", "output": "RDL3/RDL5 VST", "channel": 5},
    {"type": "midi", "name": "Organ", "output": "RDL 2 - RDL3/RDL5 VST", "channel": 6},
    {"type": "audio", "name": "Vocals", "output": "Stereo Out"},
    {"type": "group", "name": "Band", "output": "Stereo Out"},
    {"type": "midi", "name": "Bass 2", "output": "RDL 1 - RDL3/RDL5 VST", "channel": 2}
  ],
  "rack": [
    {"name": "Sampler 1", "plugIn": "Sampler", "feeds": ["Strings"]},
    {"name": "RDL 1", "plugIn": "RDL3/RDL5 VST",
     "feeds": ["Drums", "Bass", "Lead", "Pad", "Bass 2"]}
  ]
})";

constexpr std::array<std::pair<const char*, Project::TrackType>, 4> kTypes{
    {{"midi", Project::TrackType::midi},
     {"instrument", Project::TrackType::instrument},
     {"audio", Project::TrackType::audio},
     {"group", Project::TrackType::group}}};

/** One JSON object of the file, with the words that complaints name it by. */
class Entry {
public:
    Entry(const Json& object, std::string place, std::vector<const char*> known)
    : json(object)
    , where(std::move(place))
    {
        if (!json.is_object())
            fail("is not an object in braces");
        for (const auto& [key, value] : json.items())
            if (std::find(known.begin(), known.end(), key) == known.end())
                fail("has an entry " + inQuotes(key) + ", which means nothing here");
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        throw tools::Failure(where + " " + what + ".");
    }

    bool has(const char* key) const { return json.contains(key); }

    std::string text(const char* key) const
    {
        if (!has(key))
            fail("has no " + inQuotes(key));
        if (!json[key].is_string())
            fail("has a " + inQuotes(key) + " that is not a text in quotes");
        return json[key].get<std::string>();
    }

    /** Empty when there is none. */
    const Json& array(const char* key) const
    {
        static const Json none = Json::array();
        if (!has(key))
            return none;
        if (!json[key].is_array())
            fail("has " + inQuotes(key) + " that are not a list in brackets");
        return json[key];
    }

    /** From 0 to 15; 0 when there is none. */
    int32 channel() const
    {
        if (!has("channel"))
            return 0;
        const auto number = json["channel"].is_number_integer() ? json["channel"].get<int64>() : 0;
        if (number < 1 || number > 16)
            fail("has a \"channel\" that is not a whole number from 1 to 16");
        return static_cast<int32>(number) - 1;
    }

private:
    const Json& json;
    std::string where;
};

class Reader {
public:
    /** @param fileName for complaints, in quotes */
    explicit Reader(std::string fileName)
    : name(std::move(fileName))
    {
    }

    Project read(const Json& json)
    {
        const Entry top(json, name, {"tracks", "rack"});
        if (!top.has("tracks"))
            top.fail("has no \"tracks\"");
        for (const auto& track : top.array("tracks"))
            readTrack(track);
        for (const auto& instrument : top.array("rack"))
            readInstrument(instrument);
        return std::move(project);
    }

private:
    void readTrack(const Json& json)
    {
        const Entry entry(json, place("track", project.tracks.size()),
                          {"type", "name", "output", "channel"});
        Project::Track track;
        track.type = typeOf(entry);
        track.name = entry.text("name");
        if (!indices.emplace(track.name, project.tracks.size()).second)
            entry.fail("has the name of another track, " + inQuotes(track.name));
        if (entry.has("output"))
            track.output = entry.text("output");
        track.channel = entry.channel();
        project.tracks.push_back(std::move(track));
    }

    void readInstrument(const Json& json)
    {
        const Entry entry(json, place("rack entry", project.rack.size()),
                          {"name", "plugIn", "feeds"});
        Project::Instrument instrument;
        instrument.name = entry.text("name");
        if (entry.has("plugIn"))
            instrument.effectType = entry.text("plugIn");
        for (const auto& fed : entry.array("feeds"))
            instrument.feeds.push_back(trackFedBy(entry, fed));
        project.rack.push_back(std::move(instrument));
    }

    static Project::TrackType typeOf(const Entry& entry)
    {
        const auto type = entry.text("type");
        const auto* found = std::find_if(kTypes.begin(), kTypes.end(),
                                         [&](const auto& known) { return type == known.first; });
        if (found == kTypes.end())
            entry.fail("has the type " + inQuotes(type) +
                       "; a type is \"midi\", \"instrument\", \"audio\" or \"group\"");
        return found->second;
    }

    size_t trackFedBy(const Entry& entry, const Json& fed) const
    {
        if (!fed.is_string())
            entry.fail("has \"feeds\" that are not names in quotes");
        const auto found = indices.find(fed.get<std::string>());
        if (found == indices.end())
            entry.fail("feeds " + inQuotes(fed.get<std::string>()) +
                       ", which is the name of no track");
        return found->second;
    }

    std::string place(const char* what, size_t index) const
    {
        return name + ": " + what + " " + std::to_string(index + 1);
    }

    std::string name;
    Project project;
    std::map<std::string, size_t> indices; ///< of the tracks by their names
};

template <typename Text>
Json parse(const Text& text, const std::string& fileName)
{
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        const auto read = std::min<size_t>(error.byte, text.size());
        const auto lines =
            std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(read), '\n');
        throw tools::Failure(fileName + " is not JSON; the fault shows in line " +
                             std::to_string(lines + 1) + ".");
    }
}

} // namespace

Project readProject(const std::string& path)
{
    return Reader(inQuotes(path)).read(parse(readFileBytes(path, "a project"), inQuotes(path)));
}

Project demoProject()
{
    return Reader("The demo project").read(parse(std::string(kDemoProject), "The demo project"));
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
