// Options: what the command line asked for.
#pragma once

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

struct Options {
    enum class Binding { service, library };

    std::string song; ///< empty only when something else is asked for
    std::string plugIn;
    std::string host = "cubase:7.5.1";
    bool unicode = true;
    Binding binding = Binding::library;
    std::string library; ///< what the service offers
    int sampleRate = 44100;
    int blockSize = 512;
    bool realtime = false;
    bool live = false;
    std::string port;     ///< the instrument's, as SIMULATOR_MIDI_PORT names it; empty: as it says
    std::string keyboard; ///< likewise; empty: a port of play's own, if there is no song
    bool json = false;
    std::string midiOut; ///< empty: none is written
    std::string audio;   ///< empty: none is rendered
    std::string report;  ///< the page; empty: none is written
    std::string soundFont = "/usr/share/sounds/sf2/TimGM6mb.sf2";
    bool listParameters = false;
    std::vector<std::string> automate;   ///< titles
    std::vector<std::string> userTurns;  ///< titles
    std::string preset;                  ///< empty: none is loaded
    std::vector<std::string> storeBanks; ///< "BANK:NUMBER"
    bool listPorts = false;
    std::vector<std::string> connectAudio; ///< lists of four IDs with commas between them
    std::vector<std::string> connectMidi;  ///< IDs
    std::string tracks;                    ///< a file, or "demo"; empty: the project has no tracks
    std::vector<int> select;               ///< track numbers from 1

    bool wantsPorts() const { return listPorts || !connectAudio.empty() || !connectMidi.empty(); }
    bool wantsTracks() const { return !tracks.empty(); }
};

/** Reads the command line; help and complaints go to the standard streams.
    @throws tools::CommandLineExit as tools::readCommandLine does */
Options parseOptions(int argc, const char* const* argv);

} // namespace play
} // namespace Vst
} // namespace Steinberg
