#include "tools/play/Session.h"

#include "tools/common/Failure.h"
#include "tools/common/Interruption.h"
#include "tools/common/LoadedSimulator.h"
#include "tools/common/ProgressBar.h"
#include "tools/play/basics/Wording.h"
#include "tools/play/live/LiveLine.h"
#include "tools/play/output/AudioRenderer.h"
#include "tools/play/output/MidiFileWriter.h"
#include "tools/play/plugin/PresetLoader.h"
#include "tools/play/user/PortTour.h"
#include "tools/play/user/PresetArrival.h"
#include "tools/play/user/TrackTour.h"

#include <chrono>
#include <filesystem>
#include <thread>
#include <unistd.h>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr std::chrono::seconds kPortPatience{10};
constexpr std::chrono::milliseconds kPortPause{5};

/** A file that only lives as long as this object. */
class ScratchFile {
public:
    explicit ScratchFile(std::string file)
    : path(std::move(file))
    {
    }
    ~ScratchFile()
    {
        std::error_code error;
        std::filesystem::remove(path, error);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string path;
};

std::vector<Report::Bus> busesOf(IComponent& component)
{
    std::vector<Report::Bus> buses;
    for (const auto type : {kAudio, kEvent})
        for (const auto direction : {kInput, kOutput})
            for (int32 i = 0; i < component.getBusCount(type, direction); ++i) {
                BusInfo info{};
                if (component.getBusInfo(type, direction, i, info) == kResultOk)
                    buses.push_back({hostText(info.name), type == kAudio, direction == kOutput,
                                     info.channelCount});
            }
    return buses;
}

} // namespace

Session::Session(const Options& wishes)
: options(wishes)
, host(options)
, plugIn(options.plugIn, host.context())
, portWish(options.live, options.port)
, instance(plugIn, host.context(), host.handler())
, list(instance.controller())
, simulator(tools::findSimulator(host.libraryPath()))
, binding(host.binding())
{
    portWish.end();
    host.announcePorts(instance.controller());
    prepareControl();
}

/** @param deed what its user is needed for: "turn knobs" */
SimulatorControl& Session::simulatorTo(const std::string& deed) const
{
    if (simulator)
        return *simulator;
    throw tools::Failure("Only the simulated editor library has a user who can " + deed +
                         ", and it is not what the plug-in loaded.");
}

PortsReport Session::ports()
{
    auto report = PortTour(host.studio(), simulatorTo("choose ports"))
                      .run(options.connectAudio, options.connectMidi);
    const tools::Instance second(plugIn, host.context(), host.handler());
    if (auto* newest = tools::findSimulator(host.libraryPath()))
        report.secondEditorAudio = PortTour::audioInputsOf(*newest);
    return report;
}

StudioReport Session::studio()
{
    StudioReport report;
    report.host = host.family().description();
    if (options.wantsPorts())
        report.ports = ports();
    if (!options.wantsTracks())
        return report;
    if (!host.studio())
        throw tools::Failure("The host shows its tracks to no plug-in: " + report.host + ".");
    report.tracks = TrackTour(*host.studio(), simulatorTo("pick parts")).run(options.select);
    return report;
}

void Session::prepareControl()
{
    for (const auto& title : options.automate) {
        const auto& parameter = list.find(title);
        if (!parameter.canAutomate())
            throw tools::Failure("The parameter \"" + title + "\" cannot be automated.");
        automations.emplace_back(instance.controller(), parameter.id);
    }
    for (const auto& title : options.userTurns)
        turns.emplace_back(simulatorTo("turn knobs"), list.find(title).id);
    for (const auto& words : options.storeBanks) {
        simulatorTo("store banks"); // before minutes of playing
        banksToStore.push_back(bankPlaceOf(words));
    }
}

Report Session::play(const Song& song, std::ostream* terminal)
{
    if (!options.audio.empty())
        const AudioRenderer mustWork(options.soundFont); // before minutes of playing
    if (options.live)
        waitForPort();
    Report report;
    loadPresetInto(report);
    storeBanksInto(report);
    playSong(song, report, terminal);
    addControl(report);
    addLibrarySide(report);
    if (!options.live) // what was played comes out at the port then
        report.fates = fatesOf(report.played, options.blockSize);
    tryState(report);
    writeFiles(song, report);
    return report;
}

void Session::loadPresetInto(Report& report)
{
    if (options.preset.empty())
        return;
    const PresetArrival arrival(simulator);
    loadPreset(options.preset, plugIn, instance);
    report.preset = arrival.of(options.preset);
}

void Session::storeBanksInto(Report& report)
{
    for (const auto& place : banksToStore)
        report.stored.push_back(storeBank(simulatorTo("store banks"), place));
}

void Session::waitForPort()
{
    using State = SimulatorControl::MidiPort::State;
    auto& player = simulatorTo("play on a MIDI port");
    const auto end = std::chrono::steady_clock::now() + kPortPatience;
    while (player.midiPort().state == State::opening && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(kPortPause);
    const auto port = player.midiPort();
    if (port.state != State::open)
        throw tools::Failure("The instrument has no MIDI port: " +
                             (port.reason.empty() ? "it takes too long to open" : port.reason) +
                             ".");
    if (options.song.empty() || !options.keyboard.empty())
        keyboard = std::make_unique<Keyboard>(options.keyboard.empty() ? "own" : options.keyboard);
    tools::noticeInterruption();
}

void Session::waitUntilAllLeft()
{
    const auto end = std::chrono::steady_clock::now() + kPortPatience;
    while (simulator->midiPort().waiting > 0 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(kPortPause);
}

void Session::choosePrograms(const Song& song, int64 position)
{
    const auto& programs = song.programChanges();
    for (; nextProgram < programs.size(); ++nextProgram) {
        const auto& change = programs[nextProgram];
        if (song.tempo().sampleAt(change.pulse, options.sampleRate) >= position + options.blockSize)
            return;
        simulator->chooseProgram(change.channel, change.program);
    }
}

void Session::playSong(const Song& song, Report& report, std::ostream* terminal)
{
    report.song = options.song.empty() ? "MIDI keyboard at " + keyboard->name() : song.name();
    report.settings = {options.sampleRate, options.blockSize, options.realtime,
                       options.song.empty()};
    instance.start(options.sampleRate, options.blockSize);
    describe(report);
    tools::ProgressBar bar(terminal);
    LiveLine liveLine(terminal);
    Player player(instance.processor(), instance.processData(), song, report.settings);
    if (options.live)
        player.playLive([this](NoteEvent& note) { return keyboard && keyboard->next(note); },
                        &tools::isInterrupted);
    report.played = player.run(
        [&](int64 position, int64 length, double blockSeconds, ParameterChanges& changes) {
            const auto seconds = static_cast<double>(position) / options.sampleRate;
            for (auto& automation : automations)
                automation.play(position, length, changes);
            for (auto& turn : turns)
                turn.play(seconds);
            host.runLoop().advance(blockSeconds);
            const auto all = static_cast<double>(length) / options.sampleRate;
            if (!options.live)
                return bar.show(seconds, all, minutesOf(seconds, all));
            choosePrograms(song, position);
            liveLine.show(seconds, options.song.empty() ? 0 : all, player.soundingChannels(),
                          simulator->midiPort());
        });
    if (options.live)
        waitUntilAllLeft();
    instance.stop();
}

void Session::describe(Report& report)
{
    const auto& instrument = plugIn.instrument();
    report.plugIn = instrument.name() + " " + instrument.version();
    report.vendor = plugIn.vendor();
    report.host = host.family().description();
    report.binding = binding;
    report.buses = busesOf(instance.component());
    report.latency = instance.processor().getLatencySamples();
}

void Session::addControl(Report& report)
{
    report.timerTicks = host.runLoop().ticks();
    for (const auto& automation : automations)
        report.automated.push_back(
            {list.titleOf(automation.parameter()), automation.points(), automation.curve()});
    const auto edits = host.handler().edits();
    for (const auto& turn : turns) {
        auto summary = summarizeEdits(edits, turn.parameter());
        summary.title = list.titleOf(turn.parameter());
        summary.gestures = turn.gestures();
        report.turned.push_back(summary);
    }
}

void Session::addLibrarySide(Report& report)
{
    if (!simulator)
        return;
    Report::LibrarySide side{simulator->hostType(), {}, simulator->automationReceived()};
    for (int32 channel = 0; channel < 16; ++channel) {
        side.received.ons[static_cast<size_t>(channel)] = simulator->noteOnsReceived(channel);
        side.received.offs[static_cast<size_t>(channel)] = simulator->noteOffsReceived(channel);
    }
    report.library = side;
    if (options.live) {
        report.port = simulator->midiPort();
        report.copiedProgramChanges = nextProgram;
    }
}

void Session::tryState(Report& report)
{
    const auto saved = instance.state();
    tools::Instance second(plugIn, host.context(), host.handler());
    second.restore(saved);
    report.stateSize = saved.size();
    report.stateCameBack = second.state() == saved;
}

void Session::writeFiles(const Song& song, Report& report) const
{
    MidiFileWriter writer(options.sampleRate);
    writer.add(report.played.outgoing);
    if (!options.midiOut.empty()) {
        writer.write(options.midiOut);
        report.midiFile = options.midiOut;
    }
    if (options.audio.empty())
        return;
    writer.add(song.programChanges(), song.tempo());
    const ScratchFile scratch(options.audio + ".mid." + std::to_string(getpid()));
    writer.write(scratch.path);
    report.audio =
        AudioRenderer(options.soundFont).render(scratch.path, options.audio, options.sampleRate);
    report.audioFile = options.audio;
    report.copiedProgramChanges = song.programChanges().size();
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
