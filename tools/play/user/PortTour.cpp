#include "tools/play/user/PortTour.h"
#include "tools/play/basics/Wording.h"

#include "tools/common/Failure.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

std::vector<std::string> fourIDs(const std::string& list)
{
    std::vector<std::string> ids{""};
    for (const char character : list) {
        if (character == ',')
            ids.emplace_back();
        else
            ids.back() += character;
    }
    if (ids.size() != PortHandler::kChannels)
        throw tools::Failure(inQuotes(list) +
                             " does not name four audio ports with commas between them, of "
                             "which each may be left out.");
    return ids;
}

template <typename Ports>
std::vector<PortsReport::Entry> entriesOf(const Ports& ports)
{
    std::vector<PortsReport::Entry> entries;
    entries.reserve(ports.size());
    for (const auto& port : ports)
        entries.push_back({port.portId, port.portName});
    return entries;
}

} // namespace

PortsReport PortTour::run(const std::vector<std::string>& audioPorts,
                          const std::vector<std::string>& midiPorts)
{
    std::vector<std::vector<std::string>> connections;
    connections.reserve(audioPorts.size());
    for (const auto& list : audioPorts)
        connections.push_back(fourIDs(list));
    PortsReport report;
    report.isReady = control.isHostReadyForSetPort();
    look(report, "");
    for (size_t i = 0; i < connections.size(); ++i) {
        control.chooseAudioPorts(connections[i]);
        look(report, "connects audio " + inQuotes(audioPorts[i]));
    }
    for (const auto& id : midiPorts) {
        control.chooseMidiPort(id);
        look(report, "connects MIDI " + inQuotes(id));
    }
    return report;
}

std::vector<PortsReport::Entry> PortTour::audioInputsOf(SimulatorControl& simulator)
{
    return entriesOf(simulator.audioPorts());
}

void PortTour::look(PortsReport& report, const std::string& deed)
{
    PortsReport::View view;
    view.deed = deed;
    view.editorAudio = audioInputsOf(control);
    view.editorMidi = entriesOf(control.midiPorts());
    view.holdsAudio = control.isConnectAudioPort();
    if (studio) {
        for (const auto& port : studio->ports().ports())
            view.host.push_back(
                {port->about(), port->isDisplayed(), studio->ports().isInAllMidiInputs(*port)});
        view.audioInputs = studio->portHandler().audioInputs();
        view.midiOutput = studio->portHandler().midiOutput();
    }
    report.views.push_back(std::move(view));
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
