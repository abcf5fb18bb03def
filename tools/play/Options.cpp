#include "tools/play/Options.h"

#include "editorlib/EditorLibraryNames.h"
#include "tools/common/CommandLine.h"
#include "tools/common/PlugInPlaces.h"
#include "tools/common/ToolName.h"
#include "tools/host/HostFamily.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <map>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

constexpr const char* kStatuses =
    "Exit status: 0 all went well, 1 the song could not be played, 2 the command line is wrong.";

std::string missingSong()
{
    std::error_code error;
    if (std::filesystem::exists(editorLibraryPath(), error))
        return "song.mid is required";
    return "song.mid is required, and an editor library, which this machine does not have: "
           "\"" +
           tools::toolName("with-simulator") + " " + tools::toolName("play") +
           " song.mid\" lends it the simulated one";
}

void addHostOptions(CLI::App& app, Options& options)
{
    static const std::map<std::string, Options::Binding> bindings{
        {"service", Options::Binding::service}, {"library", Options::Binding::library}};
    app.add_option("--plugin", options.plugIn, "The plug-in bundle")
        ->default_str(tools::kUsualPlugIn);
    app.add_option("--host", options.host,
                   "The host to be, with its version after a colon: " + hostFamilyWords())
        ->capture_default_str();
    app.add_flag("!--no-unicode", options.unicode, "Be a host with 8-bit texts");
    app.add_option("--binding", options.binding,
                   "How the plug-in gets its editor library: \"service\" (the host lends it) or "
                   "\"library\" (the plug-in loads the installed one)")
        ->transform(CLI::Transformer(bindings))
        ->default_str("library");
    app.add_option("--library", options.library, "The editor library that the service lends")
        ->capture_default_str();
}

void addSoundOptions(CLI::App& app, Options& options)
{
    app.add_option("--rate", options.sampleRate, "Sample rate in Hz")
        ->check(CLI::IsMember({44100, 48000, 88200, 96000, 192000}))
        ->capture_default_str();
    app.add_option("--block", options.blockSize, "Samples a block")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str();
    app.add_flag("--realtime", options.realtime, "Take as long as the song lasts");
    app.add_option("--automate", options.automate, "Automate the parameter with this title")
        ->expected(1)
        ->take_all();
    app.add_option("--user-turns", options.userTurns,
                   "Let the simulated user turn the knob of the parameter with this title")
        ->expected(1)
        ->take_all();
    app.add_option("--preset", options.preset, "Load this .vstpreset file first");
    app.add_option("--store-bank", options.storeBanks,
                   "Let the simulated user store this user bank, as in 9:2 (the banks are 8, 9, 10 "
                   "and 14), into the preset folder below HOME")
        ->expected(1)
        ->take_all();
}

void addLiveOptions(CLI::App& app, Options& options)
{
    auto* live = app.add_flag(
        "--live", options.live,
        "Play in real time on a MIDI synthesizer, at a port of the simulated instrument's. Ctrl-C "
        "ends all notes. Without a song, pass on what a MIDI keyboard sends");
    app.add_option("--port", options.port,
                   "The synthesizer's MIDI port: a part of its name, \"first\" for the first there "
                   "is, \"own\" for one to connect synthesizers to; before that \"alsa:\", "
                   "\"jack:\" or \"core:\" (default: what SIMULATOR_MIDI_PORT says, else first)")
        ->needs(live);
    app.add_option("--keyboard", options.keyboard,
                   "The keyboard's MIDI port, likewise, with a song to play along with it "
                   "(default: own without a song, else none)")
        ->needs(live);
}

void addOutputOptions(CLI::App& app, Options& options)
{
    app.add_flag("--json", options.json, "Report in JSON");
    app.add_option("--midi-out", options.midiOut,
                   "Write what left through \"Midi Out\" as a MIDI file");
    app.add_option("--report", options.report,
                   "Write a page for a browser that shows what was played and what came back")
        ->type_name("FILE.html")
        ->excludes("--live");
    app.add_option("--audio", options.audio,
                   "Render what left through \"Midi Out\" as a WAVE file, with fluidsynth")
        ->excludes("--live");
    app.add_option("--soundfont", options.soundFont, "The soundfont to render with")
        ->capture_default_str();
    app.add_flag("--list-parameters", options.listParameters,
                 "List all parameters and units; with this, --ports, --connect-... or --tracks the "
                 "song may be left out");
}

void addPortOptions(CLI::App& app, Options& options)
{
    app.add_flag("--ports", options.listPorts,
                 "List the host's ports and which of them the editor lists");
    app.add_option(
           "--connect-audio", options.connectAudio,
           "Let the editor connect these audio inputs, by their IDs, to bus 1 left and "
           "right, bus 2 left and right; an ID may be left out (\",,,\" lets all go). Lists "
           "the ports before and after")
        ->type_name("A,B,C,D")
        ->expected(1)
        ->take_all();
    app.add_option(
           "--connect-midi", options.connectMidi,
           "Let the editor connect the MIDI output with this ID. Lists the ports before and "
           "after")
        ->type_name("ID")
        ->expected(1)
        ->take_all();
}

void addTrackOptions(CLI::App& app, Options& options)
{
    auto* tracks =
        app.add_option(
               "--tracks", options.tracks,
               "Open this project, a JSON file, or the built-in one called \"demo\"; select "
               "its tracks in the host, pick the editor's parts, and show who follows")
            ->type_name("FILE");
    app.add_option("--select", options.select,
                   "Select the track with this number, from 1, instead of each in turn")
        ->type_name("N")
        ->expected(1)
        ->take_all()
        ->needs(tracks);
}

} // namespace

Options parseOptions(int argc, const char* const* argv)
{
    Options options;
    options.plugIn = tools::usualPlugIn();
    options.library = editorLibraryPath();

    CLI::App app("Plays a MIDI file through the RDL3/RDL5 VST plug-in and reports what came out.",
                 tools::toolName("play"));
    app.footer(kStatuses);
    app.add_option("song", options.song, "The MIDI file");
    addHostOptions(app, options);
    addSoundOptions(app, options);
    addLiveOptions(app, options);
    addOutputOptions(app, options);
    addPortOptions(app, options);
    addTrackOptions(app, options);
    app.callback([&] {
        if (options.song.empty() && !options.live && !options.listParameters &&
            !options.wantsPorts() && !options.wantsTracks())
            throw CLI::ParseError(missingSong(), CLI::ExitCodes::RequiredError);
    });
    tools::readCommandLine(app, argc, argv);
    options.realtime = options.realtime || options.live;
    return options;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
