#include "tools/play/basics/Wording.h"
#include "tools/play/output/StudioReport.h"

#include <algorithm>
#include <sstream>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr std::array<const char*, PortHandler::kChannels> kChannelNames{
    "bus 1 left", "bus 1 right", "bus 2 left", "bus 2 right"};

constexpr const char* kIndent = "  ";

std::string yesOrNo(bool state)
{
    return state ? "yes" : "no";
}

/** "audio in", "MIDI out, proxy" */
std::string kindOf(const PortDescription& port)
{
    std::string text = port.type == PortDescription::Type::audio ? "audio" : "MIDI";
    text += port.isInput ? " in" : " out";
    for (const auto& attribute : port.attributes)
        text += ", " + attribute;
    return text;
}

/** The port's number in the editor's list, or "-". */
std::string placeIn(const std::vector<PortsReport::Entry>& list, const PortsReport::Port& port)
{
    const auto found = std::find_if(list.begin(), list.end(), [&](const auto& entry) {
        return entry.id == port.about.id && entry.name == port.about.name;
    });
    return found == list.end() ? "-" : std::to_string(found - list.begin() + 1);
}

std::string placeOf(const PortsReport::View& view, const PortsReport::Port& port)
{
    const auto isAudio = port.about.type == PortDescription::Type::audio;
    return placeIn(isAudio ? view.editorAudio : view.editorMidi, port);
}

std::string connectionsOf(const PortsReport::View& view, const PortDescription& port)
{
    std::string text;
    const auto add = [&](const std::string& name) { text += (text.empty() ? "" : ", ") + name; };
    for (size_t i = 0; i < view.audioInputs.size(); ++i)
        if (view.audioInputs[i] == port.id)
            add(kChannelNames[i]);
    if (view.midiOutput == port.id)
        add("MIDI output");
    return text;
}

std::string stateOf(const PortsReport::Port& port)
{
    const bool isTaken = port.about.type == PortDescription::Type::midi && port.about.isInput &&
                         !port.isInAllMidiInputs;
    return std::string(port.isDisplayed ? "shown" : "hidden") +
           (isTaken ? ", out of All MIDI" : "");
}

std::string line(const std::array<std::string, 5>& cells, const std::string& last)
{
    constexpr std::array<size_t, 5> widths{26, 10, 19, 24, 15};
    std::string text = kIndent;
    for (size_t i = 0; i < cells.size(); ++i)
        text += padded(cells[i], widths[i]);
    text += last;
    text.erase(text.find_last_not_of(' ') + 1);
    return text + "\n";
}

void addView(std::ostream& stream, const PortsReport::View& view)
{
    stream << (view.deed.empty() ? "The ports at first" : "The ports after the editor " + view.deed)
           << '\n';
    stream << line({"Port", "ID", "Kind", "In the host", "Editor's list"}, "Connected to");
    for (const auto& port : view.host)
        stream << line({port.about.name, port.about.id, kindOf(port.about), stateOf(port),
                        placeOf(view, port)},
                       connectionsOf(view, port.about));
    stream << kIndent << "The editor lists " << view.editorAudio.size() << " audio inputs and "
           << view.editorMidi.size()
           << " MIDI outputs; the plug-in holds audio ports: " << yesOrNo(view.holdsAudio)
           << "\n\n";
}

void addPorts(std::ostream& stream, const PortsReport& report)
{
    stream << padded("Ports", 14) << "ready to be connected: " << yesOrNo(report.isReady) << "\n\n";
    for (const auto& view : report.views)
        addView(stream, view);
    stream << "The editor of a second plug-in lists " << report.secondEditorAudio.size()
           << " audio inputs";
    for (const auto& entry : report.secondEditorAudio)
        stream << (&entry == &report.secondEditorAudio.front() ? ": " : ", ") << entry.id;
    stream << "\n\n";
}

std::string trackText(const Project& project, int32 track)
{
    if (track < 0)
        return "no track";
    return "track " + std::to_string(track + 1) + " " +
           inQuotes(project.tracks[static_cast<size_t>(track)].name);
}

std::string partText(int32 part)
{
    return "Part " + std::to_string(part + 1);
}

void addProject(std::ostream& stream, const Project& project)
{
    stream << "The project\n";
    for (size_t i = 0; i < project.tracks.size(); ++i) {
        const auto& track = project.tracks[i];
        stream << kIndent << padded(trackText(project, static_cast<int32>(i)), 24)
               << padded(nameOf(track.type), 12)
               << padded("channel " + std::to_string(track.channel + 1), 12) << "to "
               << inQuotes(track.output) << '\n';
    }
    for (const auto& instrument : project.rack) {
        stream << kIndent << padded("rack " + inQuotes(instrument.name), 24)
               << padded(inQuotes(instrument.effectType.value_or("")), 24) << "feeds";
        for (const auto track : instrument.feeds)
            stream << (track == instrument.feeds.front() ? " " : ", ") << track + 1;
        stream << '\n';
    }
    stream << '\n';
}

void addTracks(std::ostream& stream, const TracksReport& report)
{
    addProject(stream, report.project);
    stream << kIndent << padded("The host selects", 24) << "The editor\n";
    for (const auto& selection : report.selections) {
        stream << kIndent << padded(trackText(report.project, selection.track), 24);
        if (selection.toldChannel)
            stream << "is told channel " << *selection.toldChannel + 1 << " and shows ";
        else
            stream << "is told nothing and still shows ";
        stream << partText(selection.shownPart) << '\n';
    }
    stream << '\n' << kIndent << padded("The editor picks", 24) << "The host\n";
    for (const auto& choice : report.choices)
        stream << kIndent << padded(partText(choice.part), 24)
               << (choice.selects ? "selects " : "stays at ")
               << trackText(report.project, choice.track) << '\n';
    stream << '\n';
}

} // namespace

std::string textOf(const StudioReport& report)
{
    std::ostringstream stream;
    stream << padded("Host", 14) << report.host << '\n';
    if (report.ports)
        addPorts(stream, *report.ports);
    if (report.tracks)
        addTracks(stream, *report.tracks);
    return stream.str();
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
