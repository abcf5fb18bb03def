// Report: what play found out, for people and for machines.
#pragma once

#include "simulator/SimulatorControl.h"
#include "tools/play/music/Automation.h"
#include "tools/play/music/NoteFates.h"
#include "tools/play/music/Player.h"
#include "tools/play/output/EditSummary.h"
#include "tools/play/output/StudioReport.h"
#include "tools/play/output/WavFile.h"

#include <optional>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

struct Report {
    struct Bus {
        std::string name;
        bool isAudio;
        bool isOutput;
        int32 channels;
    };
    struct AutomatedParameter {
        std::string title;
        int64 points; ///< sent to the processor, one a block
        std::vector<Automation::Point> curve;
    };
    struct LoadedPreset {
        std::string file;
        std::string reached;    ///< "voice 17 of bank 3"; empty when the library does not tell
        std::vector<char> data; ///< the bytes of a user bank that reached it; empty for a voice
    };
    /** A user bank that the plug-in stored. */
    struct StoredBank {
        int32 bank;
        int32 number;
        std::string file;
    };
    /** What the editor library says that it got; only the simulator tells. */
    struct LibrarySide {
        int32 hostType; ///< 0 a host of the Cubase family, 1 stand-alone, 2 another
        NoteCounts received;
        int64 automation;
    };

    std::string plugIn; ///< name and version
    std::string vendor;
    std::string host;
    std::string binding;
    std::vector<Bus> buses;
    uint32 latency = 0; ///< samples
    std::string song;
    Player::Settings settings;
    PlayResult played;
    NoteFates fates;
    std::optional<LibrarySide> library;
    /** The instrument's MIDI port, after the last note; none when it was not played live. */
    std::optional<SimulatorControl::MidiPort> port;
    size_t stateSize = 0;       ///< bytes
    bool stateCameBack = false; ///< a second instance saved the same bytes after restoring them
    int64 timerTicks = 0;
    std::vector<AutomatedParameter> automated;
    std::vector<EditSummary> turned;
    std::optional<LoadedPreset> preset;
    std::vector<StoredBank> stored;
    std::string midiFile;  ///< empty: none was written
    std::string audioFile; ///< empty: none was rendered
    std::string pageFile;  ///< empty: none was written
    WavMeasures audio;
    StudioReport studio; ///< what was done before the song; a report of its own for people
    size_t copiedProgramChanges = 0; ///< of the song, in the audio only
};

/** One line of the report for people: what is told about, and what is told. */
struct Fact {
    std::string subject; ///< empty when it goes on with the one before
    std::string text;
};

/** How the report for people begins: who played with whom. */
std::vector<Fact> sessionFacts(const Report& report);

/** How it goes on after its table of notes. */
std::vector<Fact> resultFacts(const Report& report);

/** The report for a musician, several lines. */
std::string textOf(const Report& report);

/** The report as one JSON object. */
std::string jsonOf(const Report& report);

/** A number with a comma at each thousand. */
std::string grouped(int64 number);

} // namespace play
} // namespace Vst
} // namespace Steinberg
