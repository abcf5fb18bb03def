#include "tools/play/output/StudioJson.h"

#include "tools/common/Json.h"
#include "tools/play/output/StudioReport.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

using Json = nlohmann::ordered_json;

Json entriesOf(const std::vector<PortsReport::Entry>& entries)
{
    auto list = Json::array();
    for (const auto& entry : entries)
        list.push_back({{"id", entry.id}, {"name", entry.name}});
    return list;
}

Json portOf(const PortsReport::Port& port)
{
    const auto isAudio = port.about.type == PortDescription::Type::audio;
    return {{"id", port.about.id},
            {"name", port.about.name},
            {"type", isAudio ? "audio" : "midi"},
            {"direction", port.about.isInput ? "input" : "output"},
            {"attributes", port.about.attributes},
            {"displayed", port.isDisplayed},
            {"inAllMidiInputs", port.isInAllMidiInputs}};
}

Json viewOf(const PortsReport::View& view)
{
    auto host = Json::array();
    for (const auto& port : view.host)
        host.push_back(portOf(port));
    return {{"after", view.deed},
            {"host", host},
            {"editorAudio", entriesOf(view.editorAudio)},
            {"editorMidi", entriesOf(view.editorMidi)},
            {"holdsAudio", view.holdsAudio},
            {"audioInputs", view.audioInputs},
            {"midiOutput", view.midiOutput}};
}

Json portsOf(const PortsReport& report)
{
    auto views = Json::array();
    for (const auto& view : report.views)
        views.push_back(viewOf(view));
    return {{"ready", report.isReady},
            {"views", views},
            {"secondEditorAudio", entriesOf(report.secondEditorAudio)}};
}

/** Counted from 1, as people do; null for none. */
Json number(int32 index)
{
    return index < 0 ? Json() : Json(index + 1);
}

Json tracksOf(const TracksReport& report)
{
    auto selections = Json::array();
    for (const auto& selection : report.selections)
        selections.push_back({{"track", number(selection.track)},
                              {"toldChannel", number(selection.toldChannel.value_or(-1))},
                              {"shownPart", number(selection.shownPart)}});
    auto choices = Json::array();
    for (const auto& choice : report.choices)
        choices.push_back({{"part", number(choice.part)},
                           {"selects", choice.selects},
                           {"track", number(choice.track)}});
    return {{"selections", selections}, {"choices", choices}};
}

} // namespace

void addTo(nlohmann::ordered_json& json, const StudioReport& report)
{
    if (report.ports)
        json["ports"] = portsOf(*report.ports);
    if (report.tracks)
        json["tracks"] = tracksOf(*report.tracks);
}

std::string jsonOf(const StudioReport& report)
{
    Json json;
    json["host"] = report.host;
    addTo(json, report);
    return tools::dumped(json);
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
