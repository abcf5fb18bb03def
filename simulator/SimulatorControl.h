// SimulatorControl: makes the simulated editor library do what a user would do, and tells what
// reached it. For tools and tests; the plug-in does not know it.
#pragma once

#include "editorlib/VoiceBank.h"
#include "editorlib/VSTiPorts.h"
#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {

/** One object per VstIEditorConnect, valid until that object's destroy. Get it from the library
    after the plug-in has loaded it:

        void* library = dlopen(path, RTLD_LAZY | RTLD_NOLOAD);
        auto get = reinterpret_cast<GetSimulatorControl>(dlsym(library, getSimulatorControlName));
        SimulatorControl* control = get(-1);
        ... and at last dlclose(library); the plug-in keeps it loaded.

    Any thread may call, but operations marked [reaches the controller] call the plug-in on the
    same thread, so call these on the host's main thread. No call may be under way when the object
    is destroyed. */
struct SimulatorControl {
    /** A preset or a user bank that the plug-in applied. data is empty for a preset. */
    struct Applied {
        int32 bank;
        int32 number;
        std::vector<char> data;
    };

    /** The system's MIDI port to which the instrument is connected, if the environment variable
        SIMULATOR_MIDI_PORT asks for one. Messages are counted from the instrument's start. */
    struct MidiPort {
        enum class State {
            unused,  ///< no port is asked for: a loop sends the host's notes back
            opening, ///< messages wait until it is open
            open,
            away, ///< it was open, but the instrument or its cable is gone; it may come back
            none  ///< there is no such port, it could not be opened, or it is gone for good
        };
        State state = State::unused;
        std::string name;     ///< of the open port
        std::string reason;   ///< why no port is open, for people; a part of a sentence
        uint32 left = 0;      ///< messages that the system took
        uint32 notesLeft = 0; ///< note-ons and note-offs among them
        uint32 waiting = 0;   ///< messages in the queue
        uint32 lost = 0;      ///< messages dropped, in both directions: no port, or a full queue
        uint32 arrived = 0;   ///< messages that came from the instrument and were understood
    };

    // What the user does -------------------------------------------------------------------------

    /** Turns a knob: begin of edit, the value, end of edit. The library's own value changes at
        once; the controller's callbacks come with the observer's next checkChange. The first turn
        since the sound was stored or loaded also sets the edit flag, with a begin and an end of
        its own.
        @param value editor value; clamped to the parameter's range
        @return false for an unknown parameter, and when 1,000 turns of it are waiting already */
    virtual bool turnKnob(uint32 id, int32 value) = 0;

    /** The same with several values, at least one, between one begin and one end. */
    virtual bool turnKnobThrough(uint32 id, const std::vector<int32>& values) = 0;

    /** Shows a part (0 to 15) and has the host select a track that plays its channel: the part's
        number. @return false without a controller, or for another part. [reaches the controller] */
    virtual bool choosePart(int32 part) = 0;

    /** Connects the two stereo inputs: bus 0 left and right, bus 1 left and right. An empty ID
        leaves a channel unconnected. @return false without a controller, and for another number of
        IDs than four. [reaches the controller] */
    virtual bool chooseAudioPorts(const std::vector<std::string>& ids) = 0;

    /** Connects the MIDI output; an unknown ID disconnects it. An instrument at a MIDI port of the
        system moves to the system's port of the same name. @return false without a controller.
        [reaches the controller] */
    virtual bool chooseMidiPort(const std::string& id) = 0;

    /** Has the plug-in write a user bank into the user's preset folder. @return false without a
        controller. [reaches the controller] */
    virtual bool storeBank(VoiceBank::Bank bank, int32 index) = 0;

    /** Sets the result of getLatencyMode, which is 1 at first, and tells the controller.
        [reaches the controller] */
    virtual void chooseLatencyMode(int32 mode) = 0;

    /** Tells the controller whether a start file is still to be loaded. [reaches the controller] */
    virtual void announceStartFile(bool pending) = 0;

    /** Set the results of getStateFormat and getFirstStartState, which are 0 at first. */
    virtual void chooseStateFormat(int32 format) = 0;
    virtual void chooseFirstStart(int32 state) = 0;

    // What the user sees -------------------------------------------------------------------------

    /** The host's ports as the controller lists them; empty without a controller. [reaches
        the controller] */
    virtual std::vector<VSTiAudioPort::AudioPortInfo> audioPorts() = 0;
    virtual std::vector<VSTiMidiPort::MidiOutPortInfo> midiPorts() = 0;

    /** The controller's results; false without a controller. [reaches the controller] */
    virtual bool isConnectAudioPort() = 0;
    virtual bool isConnectAudioPortHost() = 0;
    virtual bool isHostReadyForSetPort() = 0;

    /** The part that the editor shows, 0 to 15; 0 at first. */
    virtual int32 shownPart() = 0;
    /** Whether the sound was edited since it was last stored or loaded. */
    virtual bool edited() = 0;
    /** Whether the editor is open in a window. */
    virtual bool editorOpen() = 0;
    /** A parameter's editor value; 0 for an unknown one. */
    virtual int32 parameterValue(uint32 id) = 0;
    /** Every parameter's ID in ascending order. */
    virtual std::vector<uint32> parameterIds() = 0;
    /** The sound as the text that setStateText takes. */
    virtual std::u16string stateText() = 0;

    // What reached the library -------------------------------------------------------------------

    /** Note-ons with a velocity above 0, and note-offs of both kinds, on a channel of 0 to 15. */
    virtual uint32 noteOnsReceived(int32 channel) = 0;
    virtual uint32 noteOffsReceived(int32 channel) = 0;
    /** MIDI messages that are not notes, such as 0, 0, 0. They are not sent to the instrument. */
    virtual uint32 otherMidiReceived() = 0;
    /** Calls of hostParameterChanged, also for unknown parameters. */
    virtual uint32 automationReceived() = 0;
    /** Calls of applyPreset and applyUserBank, also for unknown voices: the newest 1,000 of each,
        oldest first. */
    virtual std::vector<Applied> presetsApplied() = 0;
    virtual std::vector<Applied> userBanksApplied() = 0;
    /** Number of calls of syncPartToMidiChannel, and the channel of the last one; -1 before any. */
    virtual uint32 channelsTold() = 0;
    virtual int32 lastChannelTold() = 0;
    /** What setHostType set; -1 before it. */
    virtual int32 hostType() = 0;
    /** Life-cycle and editor calls as "operation(arguments)": the newest 10,000, oldest first.
        Calls on the audio thread and queries of parameters and voices are left out. */
    virtual std::vector<std::string> log() = 0;

    // The instrument's own MIDI ------------------------------------------------------------------

    virtual MidiPort midiPort() = 0;
    /** Sends a program change, which selects a sound of a General MIDI synthesizer at the port.
        @param part 0 to 15 @param program 0 to 127 @return false for other numbers */
    virtual bool chooseProgram(int32 part, int32 program) = 0;

protected:
    ~SimulatorControl() = default;
};

/** Gives the control of an instance: 0 is the oldest one that exists, -1 the newest. Null when
    there is none. */
using GetSimulatorControl = SimulatorControl* (*)(int index);

/** The name under which the library exports its GetSimulatorControl. */
constexpr const char* getSimulatorControlName = "getSimulatorControl";

} // namespace Vst
} // namespace Steinberg
