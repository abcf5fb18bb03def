// StudioReport: what play found out about ports and tracks, for people and for machines.
#pragma once

#include "tools/host/studio/PortHandler.h"
#include "tools/host/studio/Project.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

struct PortsReport {
    /** A port of the host. */
    struct Port {
        PortDescription about;
        bool isDisplayed;
        bool isInAllMidiInputs;
    };
    /** A port as the editor library lists it. */
    struct Entry {
        std::string id;
        std::string name;
    };
    /** How things stand after something was done. */
    struct View {
        std::string deed; ///< what the editor's user did before; empty at first
        std::vector<Port> host;
        std::vector<Entry> editorAudio; ///< the library's list of audio inputs
        std::vector<Entry> editorMidi;  ///< the library's list of MIDI outputs
        bool holdsAudio = false;        ///< the plug-in's answer to isConnectAudioPort
        std::array<std::string, PortHandler::kChannels> audioInputs; ///< IDs, or empty
        std::string midiOutput;                                      ///< ID, or empty
    };

    bool isReady = false; ///< whether the plug-in knows that the host's ports can be connected
    std::vector<View> views;
    std::vector<Entry> secondEditorAudio; ///< what another plug-in's library lists at the end
};

/** Track numbers are indices from 0, -1 for none; parts and channels count from 0. */
struct TracksReport {
    struct Selection {
        int32 track;
        std::optional<int32> toldChannel; ///< what the editor was told, if it was told anything
        int32 shownPart;                  ///< by the editor, afterwards
    };
    struct Choice {
        int32 part;
        bool selects; ///< whether the plug-in had the host select a track
        int32 track;  ///< selected in the host, afterwards
    };

    Project project;
    std::vector<Selection> selections; ///< by the host's user
    std::vector<Choice> choices;       ///< by the editor's user
};

struct StudioReport {
    std::string host;
    std::optional<PortsReport> ports;
    std::optional<TracksReport> tracks;
};

/** The report for people, tables. */
std::string textOf(const StudioReport& report);

/** The report as one JSON object, with "host" and what there is of "ports" and "tracks". */
std::string jsonOf(const StudioReport& report);

} // namespace play
} // namespace Vst
} // namespace Steinberg
