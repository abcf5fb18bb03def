#include "tools/play/basics/Wording.h"
#include "tools/play/output/Report.h"

#include <cstdio>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr size_t kSubjectWidth = 14;
constexpr size_t kColumnWidth = 14;

std::string decimals(double number, int places)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", places, number);
    return text;
}

std::string right(const std::string& text, size_t width)
{
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string linesOf(const std::vector<Fact>& facts)
{
    std::string lines;
    for (const auto& fact : facts)
        lines += padded(fact.subject, kSubjectWidth) + fact.text + "\n";
    return lines;
}

void add(std::vector<Fact>& facts, const std::string& subject, const std::string& text)
{
    facts.push_back({subject, text});
}

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

std::string missingText(int64 missing)
{
    if (missing == 0)
        return "nothing was lost";
    return missing > 0 ? grouped(missing) + " were lost"
                       : grouped(-missing) + " more left than were sent";
}

std::string notesTable(const Report& report)
{
    const auto& played = report.played;
    auto table = padded("MIDI channel", kSubjectWidth) + right("notes sent", kColumnWidth) +
                 (report.library ? right("editor got", kColumnWidth) : "") +
                 right("\"Midi Out\"", kColumnWidth) + "   (note-ons/note-offs)\n";
    const auto pair = [](const NoteCounts& counts, size_t i) {
        return right(std::to_string(counts.ons[i]) + "/" + std::to_string(counts.offs[i]),
                     kColumnWidth);
    };
    for (size_t i = 0; i < played.sent.ons.size(); ++i)
        if (played.sent.ons[i] + played.sent.offs[i] + played.left.ons[i] + played.left.offs[i] > 0)
            table += padded(std::to_string(i + 1), kSubjectWidth) + pair(played.sent, i) +
                     (report.library ? pair(report.library->received, i) : "") +
                     pair(played.left, i) + "\n";
    return table;
}

void addProgramChanges(std::vector<Fact>& facts, const Report& report)
{
    if (report.copiedProgramChanges > 0)
        add(facts, "",
            grouped(static_cast<int64>(report.copiedProgramChanges)) +
                " program changes were copied from the song, to choose the sounds: they "
                "do not go through the plug-in");
}

void addPort(std::vector<Fact>& facts, const SimulatorControl::MidiPort& port, int64 sent)
{
    const auto notesLeft = static_cast<int64>(port.notesLeft);
    add(facts, "Notes",
        grouped(sent) + " events sent, " + grouped(notesLeft) +
            " left at the MIDI port: " + missingText(sent - notesLeft));
    add(facts, "MIDI port",
        (port.state == SimulatorControl::MidiPort::State::open ? port.name
                                                               : "none: " + port.reason) +
            "; " + grouped(port.left) + " messages left, " + grouped(port.lost) + " lost, " +
            grouped(port.arrived) + " arrived");
}

void addNotes(std::vector<Fact>& facts, const Report& report)
{
    const auto& played = report.played;
    const auto sent = played.sent.allOns() + played.sent.allOffs();
    const auto out = played.left.allOns() + played.left.allOffs();
    if (report.port) {
        addPort(facts, *report.port, sent);
        addProgramChanges(facts, report);
    } else {
        add(facts, "Notes",
            grouped(sent) + " events sent, " + grouped(out) +
                " left through \"Midi Out\": " + missingText(sent - out));
    }
    if (played.crowdedBlocks > 0)
        add(facts, "",
            grouped(played.crowdedBlocks) + (played.crowdedBlocks == 1 ? " block" : " blocks") +
                " had more than " + grouped(Player::kPlugInQueue) +
                " events; the plug-in then drops what waits");
    if (played.otherOutgoing > 0)
        add(facts, "", grouped(played.otherOutgoing) + " other events left through \"Midi Out\"");
}

void addControl(std::vector<Fact>& facts, const Report& report)
{
    if (report.preset)
        add(facts, "Preset",
            report.preset->file + (report.preset->reached.empty()
                                       ? " was loaded"
                                       : " reached the editor as " + report.preset->reached));
    for (const auto& bank : report.stored)
        add(facts, "Bank stored",
            "user bank " + std::to_string(bank.bank) + ", number " + std::to_string(bank.number) +
                ", as " + bank.file);
    for (const auto& parameter : report.automated)
        add(facts, "Automation",
            "\"" + parameter.title + "\", " + grouped(parameter.points) + " points, one a block" +
                (report.library ? "; the editor got " + grouped(report.library->automation) : ""));
    for (const auto& turn : report.turned)
        add(facts, "User turned",
            "\"" + turn.title + "\" " + grouped(turn.gestures) + " times; the host saw " +
                grouped(turn.begins) + " begin, " + grouped(turn.performs) + " perform, " +
                grouped(turn.ends) + " end, " + (turn.inOrder ? "each in order" : "NOT in order"));
}

void addEnding(std::vector<Fact>& facts, const Report& report)
{
    add(facts, "State",
        grouped(static_cast<int64>(report.stateSize)) + " bytes; a second instance " +
            (report.stateCameBack ? "restored them and saved the same"
                                  : "restored them but saved others"));
    const auto block = static_cast<double>(report.settings.blockSize) / report.settings.sampleRate;
    add(facts, "process",
        "at most " + decimals(kMillisecondsPerSecond * report.played.process.longest(), 3) +
            " ms of the " + decimals(kMillisecondsPerSecond * block, 1) +
            " ms that a block lasts, in " + grouped(report.played.blocks) + " blocks; " +
            grouped(report.timerTicks) + " timer ticks");
    if (!report.midiFile.empty())
        add(facts, "MIDI file", report.midiFile);
    if (!report.pageFile.empty())
        add(facts, "Page", report.pageFile);
    if (!report.audioFile.empty())
        add(facts, "Audio file",
            report.audioFile + ", " + minutes(report.audio.seconds) + ", loudest " +
                decibels(report.audio.peak) + ", on average " + decibels(report.audio.rms));
    if (!report.port)
        addProgramChanges(facts, report);
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

std::vector<Fact> sessionFacts(const Report& report)
{
    std::vector<Fact> facts;
    add(facts, "Plug-in", report.plugIn + " by " + report.vendor);
    add(facts, "Host",
        report.host + (report.library
                           ? "; the plug-in took it for " + hostTypeText(report.library->hostType)
                           : ""));
    add(facts, "Editor", report.binding);
    add(facts, "Buses", busesText(report.buses));
    add(facts, "Sound set-up",
        grouped(report.settings.sampleRate) + " Hz, blocks of " +
            grouped(report.settings.blockSize) + " samples, latency " + grouped(report.latency) +
            " samples (" +
            decimals(kMillisecondsPerSecond * report.latency / report.settings.sampleRate, 1) +
            " ms)");
    return facts;
}

std::vector<Fact> resultFacts(const Report& report)
{
    std::vector<Fact> facts;
    addNotes(facts, report);
    addControl(facts, report);
    addEnding(facts, report);
    return facts;
}

std::string textOf(const Report& report)
{
    const auto seconds = static_cast<double>(report.played.samples) / report.settings.sampleRate;
    return report.song + ", " + minutes(seconds) + "\n\n" + linesOf(sessionFacts(report)) + "\n" +
           notesTable(report) + "\n" + linesOf(resultFacts(report));
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
