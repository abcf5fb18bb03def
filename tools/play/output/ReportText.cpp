#include "tools/play/basics/Wording.h"
#include "tools/play/output/Report.h"

#include <cstdio>
#include <sstream>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

std::string decimals(double number, int places)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", places, number);
    return text;
}

std::string left(const std::string& text, size_t width)
{
    return text + std::string(width > text.size() ? width - text.size() : 0, ' ');
}

std::string right(const std::string& text, size_t width)
{
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

/** Lines of "subject    what is to be said". */
class Lines {
public:
    void add(const std::string& subject, const std::string& text)
    {
        stream << left(subject, 14) << text << '\n';
    }
    void addPlain(const std::string& text) { stream << text << '\n'; }
    std::string text() const { return stream.str(); }

private:
    std::ostringstream stream;
};

std::string hostTypeText(int32 type)
{
    if (type == 0)
        return "a host of the Cubase family";
    return type == 1 ? "the maker's stand-alone host" : "another host";
}

std::string busText(const Report::Bus& bus)
{
    auto text = "\"" + bus.name + "\"" + (bus.isOutput ? " out" : " in") + " (";
    if (!bus.isAudio)
        return text + std::to_string(bus.channels) + " MIDI channels)";
    return text + (bus.channels == 2 ? "stereo" : std::to_string(bus.channels) + " channels") + ")";
}

std::string busesText(const std::vector<Report::Bus>& buses)
{
    std::string text;
    for (const auto& bus : buses)
        text += (text.empty() ? "" : ", ") + busText(bus);
    return text;
}

void addSession(Lines& lines, const Report& report)
{
    lines.add("Plug-in", report.plugIn + " by " + report.vendor);
    lines.add("Host", report.host + (report.library ? "; the plug-in took it for " +
                                                          hostTypeText(report.library->hostType)
                                                    : ""));
    lines.add("Editor", report.binding);
    lines.add("Buses", busesText(report.buses));
    lines.add(
        "Sound set-up",
        grouped(report.settings.sampleRate) + " Hz, blocks of " +
            grouped(report.settings.blockSize) + " samples, latency " + grouped(report.latency) +
            " samples (" +
            decimals(kMillisecondsPerSecond * report.latency / report.settings.sampleRate, 1) +
            " ms)");
}

std::string missingText(int64 missing)
{
    if (missing == 0)
        return "nothing was lost";
    return missing > 0 ? grouped(missing) + " were lost"
                       : grouped(-missing) + " more left than were sent";
}

void addPort(Lines& lines, const SimulatorControl::MidiPort& port, int64 sent)
{
    lines.add("Notes", grouped(sent) + " events sent, " + grouped(port.notesLeft) +
                           " left at the MIDI port: " + missingText(sent - port.notesLeft));
    lines.add("MIDI port",
              (port.state == SimulatorControl::MidiPort::State::open ? port.name
                                                                     : "none: " + port.reason) +
                  "; " + grouped(port.left) + " messages left, " + grouped(port.lost) + " lost, " +
                  grouped(port.arrived) + " arrived");
}

void addProgramChanges(Lines& lines, const Report& report)
{
    if (report.copiedProgramChanges > 0)
        lines.add("", grouped(static_cast<int64>(report.copiedProgramChanges)) +
                          " program changes were copied from the song, to choose the sounds: they "
                          "do not go through the plug-in");
}

void addNotes(Lines& lines, const Report& report)
{
    const auto& played = report.played;
    const auto sent = played.sent.allOns() + played.sent.allOffs();
    const auto out = played.left.allOns() + played.left.allOffs();
    lines.addPlain("");
    lines.addPlain(left("MIDI channel", 14) + right("notes sent", 14) +
                   (report.library ? right("editor got", 14) : "") + right("\"Midi Out\"", 14) +
                   "   (note-ons/note-offs)");
    const auto pair = [](const NoteCounts& counts, size_t i) {
        return right(std::to_string(counts.ons[i]) + "/" + std::to_string(counts.offs[i]), 14);
    };
    for (size_t i = 0; i < played.sent.ons.size(); ++i)
        if (played.sent.ons[i] + played.sent.offs[i] + played.left.ons[i] + played.left.offs[i] > 0)
            lines.addPlain(left(std::to_string(i + 1), 14) + pair(played.sent, i) +
                           (report.library ? pair(report.library->received, i) : "") +
                           pair(played.left, i));
    lines.addPlain("");
    if (report.port) {
        addPort(lines, *report.port, sent);
        addProgramChanges(lines, report);
    } else {
        lines.add("Notes", grouped(sent) + " events sent, " + grouped(out) +
                               " left through \"Midi Out\": " + missingText(sent - out));
    }
    if (played.crowdedBlocks > 0)
        lines.add("", grouped(played.crowdedBlocks) +
                          (played.crowdedBlocks == 1 ? " block" : " blocks") + " had more than " +
                          grouped(Player::kPlugInQueue) +
                          " events; the plug-in then drops what waits");
    if (played.otherOutgoing > 0)
        lines.add("", grouped(played.otherOutgoing) + " other events left through \"Midi Out\"");
}

void addControl(Lines& lines, const Report& report)
{
    if (report.preset)
        lines.add("Preset",
                  report.preset->file + (report.preset->reached.empty()
                                             ? " was loaded"
                                             : " reached the editor as " + report.preset->reached));
    for (const auto& bank : report.stored)
        lines.add("Bank stored", "user bank " + std::to_string(bank.bank) + ", number " +
                                     std::to_string(bank.number) + ", as " + bank.file);
    for (const auto& parameter : report.automated)
        lines.add(
            "Automation",
            "\"" + parameter.title + "\", " + grouped(parameter.points) + " points, one a block" +
                (report.library ? "; the editor got " + grouped(report.library->automation) : ""));
    for (const auto& turn : report.turned)
        lines.add("User turned", "\"" + turn.title + "\" " + grouped(turn.gestures) +
                                     " times; the host saw " + grouped(turn.begins) + " begin, " +
                                     grouped(turn.performs) + " perform, " + grouped(turn.ends) +
                                     " end, " + (turn.inOrder ? "each in order" : "NOT in order"));
}

void addEnding(Lines& lines, const Report& report)
{
    lines.add("State", grouped(static_cast<int64>(report.stateSize)) +
                           " bytes; a second instance " +
                           (report.stateCameBack ? "restored them and saved the same"
                                                 : "restored them but saved others"));
    const auto block = static_cast<double>(report.settings.blockSize) / report.settings.sampleRate;
    lines.add("process", "at most " +
                             decimals(kMillisecondsPerSecond * report.played.longestProcess, 3) +
                             " ms of the " + decimals(kMillisecondsPerSecond * block, 1) +
                             " ms that a block lasts, in " + grouped(report.played.blocks) +
                             " blocks; " + grouped(report.timerTicks) + " timer ticks");
    if (!report.midiFile.empty())
        lines.add("MIDI file", report.midiFile);
    if (!report.audioFile.empty())
        lines.add("Audio file", report.audioFile + ", " + minutes(report.audio.seconds) +
                                    ", loudest " + decibels(report.audio.peak) + ", on average " +
                                    decibels(report.audio.rms));
    if (!report.port)
        addProgramChanges(lines, report);
}

} // namespace

std::string grouped(int64 number)
{
    auto text = std::to_string(number);
    const size_t first = number < 0 ? 1 : 0;
    for (size_t at = text.size(); at > first + 3;) {
        at -= 3;
        text.insert(at, ",");
    }
    return text;
}

std::string textOf(const Report& report)
{
    Lines lines;
    const auto seconds = static_cast<double>(report.played.samples) / report.settings.sampleRate;
    lines.addPlain(report.song + ", " + minutes(seconds));
    lines.addPlain("");
    addSession(lines, report);
    addNotes(lines, report);
    addControl(lines, report);
    addEnding(lines, report);
    return lines.text();
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
