// SimulatorControl: asks the simulated editor library to act as its user would, and looks at what
// reached it. For tools and tests; the plug-in knows nothing of it.
#pragma once

#include "editorlib/VoiceBank.h"
#include "editorlib/VSTiPorts.h"
#include "pluginterfaces/base/ftypes.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {

/** One object per VstIEditorConnect, valid until that object's destroy. Get it from the library
   that the plug-in has loaded, after it did:

        void* library = dlopen(path, RTLD_LAZY | RTLD_NOLOAD);
        auto get = reinterpret_cast<GetSimulatorControl>(dlsym(library, getSimulatorControlName));
        SimulatorControl* control = get(-1);
        ... and dlclose(library), which leaves it loaded for the plug-in.

    Any thread may call, with two limits. Operations that reach the controller (said below) run on
    the calling thread, so call them where the plug-in's host expects them: on its main thread. And
    no call may be under way while the object is destroyed. */
struct SimulatorControl {
    /** A preset or a user bank that the plug-in applied. data is empty for a preset. */
    struct Applied {
        int32 bank;
        int32 number;
        std::vector<char> data;
    };

    /** The MIDI port of the system's behind which the instrument is, where the environment variable
        SIMULATOR_MIDI_PORT asks for one. Messages count from the instrument's begin. */
    struct MidiPort {
        enum class State {
            unused,  ///< no port is asked for: a loop hands the host's notes back
            opening, ///< what is sent waits
            open,
            away, ///< it was open, and the instrument or its cable is gone; it may come back
            none  ///< there is no such port, or it could not be opened, or it is gone for good
        };
        State state = State::unused;
        std::string name;     ///< of the open port
        std::string reason;   ///< why there is none, for people; a part of a sentence
        uint32 left = 0;      ///< messages that were handed to the system
        uint32 notesLeft = 0; ///< of them: note-ons and note-offs
        uint32 waiting = 0;   ///< messages on their way to it
        uint32 lost = 0; ///< messages for which there was no port, or no room, in either direction
        uint32 arrived = 0; ///< messages that were understood
    };

    // What the user does -------------------------------------------------------------------------

    /** Turns a knob in one gesture: begin, the value, end. The library's own value changes at once;
        the controller's callbacks come with the observer's next checkChange. The first turn since
       the sound was last stored or loaded also raises the edit flag (edited), as a gesture of its
       own.
        @param value editor value, clamped to the parameter's range
        @return false for an unknown parameter, or when 1,000 gestures of it are waiting already */
    virtual bool turnKnob(uint32 id, int32 value) = 0;

    /** The same with several values in one gesture, in order. At least one. */
    virtual bool turnKnobThrough(uint32 id, const std::vector<int32>& values) = 0;

    /** Shows a part (0 to 15) and has the host select a track that plays its channel: the part's
        number. @return false without a controller, or for another part. [reaches the controller] */
    virtual bool choosePart(int32 part) = 0;

    /** Connects the two stereo inputs: bus 0 left and right, bus 1 left and right. An empty ID
       leaves a channel unconnected. @return false without a controller, or unless there are four
       IDs. [reaches the controller] */
    virtual bool chooseAudioPorts(const std::vector<std::string>& ids) = 0;

    /** Connects the MIDI output; an ID that no port has disconnects it. Behind a MIDI port of the
        system's the instrument moves to the one that has the port's name. @return false without a
        controller. [reaches the controller] */
    virtual bool chooseMidiPort(const std::string& id) = 0;

    /** Has the plug-in write a user bank into the user's preset folder. @return false without a
        controller. [reaches the controller] */
    virtual bool storeBank(VoiceBank::Bank bank, int32 index) = 0;

    /** What getLatencyMode answers from now on, 1 at first; tells the controller that it changed.
        [reaches the controller] */
    virtual void chooseLatencyMode(int32 mode) = 0;

    /** Says whether a start file is still to be loaded. [reaches the controller] */
    virtual void announceStartFile(bool pending) = 0;

    /** What getStateFormat (0 at first) and getFirstStartState (0 at first) answer from now on. */
    virtual void chooseStateFormat(int32 format) = 0;
    virtual void chooseFirstStart(int32 state) = 0;

    // What the user sees -------------------------------------------------------------------------

    /** The host's ports as the controller lists them; empty without one. [reaches the controller]
     */
    virtual std::vector<VSTiAudioPort::AudioPortInfo> audioPorts() = 0;
    virtual std::vector<VSTiMidiPort::MidiOutPortInfo> midiPorts() = 0;

    /** What the controller answers; false without one. [reaches the controller] */
    virtual bool isConnectAudioPort() = 0;
    virtual bool isConnectAudioPortHost() = 0;
    virtual bool isHostReadyForSetPort() = 0;

    /** The part that the editor shows, 0 to 15, 0 at first. */
    virtual int32 shownPart() = 0;
    /** Whether the sound was edited since it was last stored or loaded. */
    virtual bool edited() = 0;
    /** Whether the editor stands open in a window. */
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
    /** MIDI messages that were no note, among them 0, 0, 0. They are not sent on. */
    virtual uint32 otherMidiReceived() = 0;
    /** Calls of hostParameterChanged, unknown parameters included. */
    virtual uint32 automationReceived() = 0;
    /** The calls of applyPreset and applyUserBank, unknown voices included, oldest first: the
       newest 1,000 of each. */
    virtual std::vector<Applied> presetsApplied() = 0;
    virtual std::vector<Applied> userBanksApplied() = 0;
    /** Calls of syncPartToMidiChannel, and the last one's channel: -1 before any. */
    virtual uint32 channelsTold() = 0;
    virtual int32 lastChannelTold() = 0;
    /** -1 before setHostType. */
    virtual int32 hostType() = 0;
    /** Life-cycle and editor calls as "operation(arguments)", oldest first: the newest 10,000.
        Calls on the audio thread and parameter and voice queries are not in it. */
    virtual std::vector<std::string> log() = 0;

    // The instrument's own MIDI ------------------------------------------------------------------

    virtual MidiPort midiPort() = 0;
    /** Chooses a sound of a General MIDI synthesizer at the port, as its user would at its panel.
        @param part 0 to 15 @param program 0 to 127 @return false outside them */
    virtual bool chooseProgram(int32 part, int32 program) = 0;

protected:
    ~SimulatorControl() = default;
};

/** The control of an instance: 0 is the oldest that lives, -1 the newest. Null when there is none.
 */
using GetSimulatorControl = SimulatorControl* (*)(int index);

/** The name under which the library exports its GetSimulatorControl. */
constexpr const char* getSimulatorControlName = "getSimulatorControl";

} // namespace Vst
} // namespace Steinberg
