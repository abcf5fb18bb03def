// VstIControllerInterface: what the editor library calls in the controller.
#pragma once

#include "editorlib/VoiceBank.h"
#include "editorlib/VSTiPorts.h"

#include <vector>

namespace Steinberg {
namespace Vst {

/** Implemented by VstK2xController. The library gets it by
    VstIEditorConnect::setControllerInterface and must not use it after that call with null, which
    terminate makes. Not reference counted. No operation throws.

    Where nothing else is said, the library calls from one thread at a time. */
class VstIControllerInterface {
public:
    /** The host's audio input ports in host order.
        @return the controller's own list, never null, rebuilt by each call */
    virtual std::vector<VSTiAudioPort::AudioPortInfo>* getAudioPortList() = 0;

    /** Connects the two stereo input buses.
        @param ids four port IDs: bus 0 left, bus 0 right, bus 1 left, bus 1 right; a null or empty
        one leaves its channel unconnected; a null array does nothing */
    virtual void setAudioPortList(const char** ids) = 0;

    /** The host's MIDI output ports in host order; ownership as in getAudioPortList. */
    virtual std::vector<VSTiMidiPort::MidiOutPortInfo>* getMidiOutPortList() = 0;

    /** Connects the MIDI output to the port with this ID, or to none when no port has it. */
    virtual void setMidiOutPort(const char* id) = 0;

    /** Makes the host select the first track that plays this MIDI channel (0 to 15) through this
        plug-in, unless the selected track does. The host may tell the plug-in of the selection, and
        the plug-in call syncPartToMidiChannel, before this call returns. Does nothing for another
        channel, and inside sixteen nested calls. */
    virtual void editorPartSyncMidiCh(unsigned int channel) = 0;

    /** Writes a user bank into the user's preset folder, and replaces the file of that name if
        there is one. Does not tell whether it succeeded. Asks the library for the bank's name,
        categories and data before it returns. [any library thread]
        @param bank 8, 9, 10 or 14; nothing is written for another
        @param index which of the bank's contents, as in getUserBankData */
    virtual void storeUserBank(VoiceBank::Bank bank, int index) = 0;

    /** Stores an editor value without telling the host. [any library thread] */
    virtual void setVSTManageParameter(unsigned int id, int value) = 0;

    /** Sets whether the start file is still to be loaded: the plug-in gives it back in
        onInitialStartFileLoad, and inverted in onHostPortsReady. [any library thread] */
    virtual void setInitialStartFileLoad(bool state) = 0;

    /** Whether setAudioPortList has connected any audio port. */
    virtual bool isConnectAudioPort() = 0;

    /** Converts a host's value to an editor value and stores that. [any library thread]
        @param id VST parameter ID
        @param value normalized value of the host
        @param[out] out the editor value when it changed, else 0
        @return whether the editor value changed */
    virtual bool isSetVSTValue(unsigned int id, double value, int& out) = 0;

    /** Tells the host that the latency changed, on the calling thread. Does nothing without a
        component handler. [any library thread] */
    virtual void changeLatencyTrigger() = 0;

    /** Whether the host connects the audio ports itself. [any library thread] */
    virtual bool isConnectAudioPortHost() = 0;

    /** Whether the host has said that its ports can be connected. [any library thread] */
    virtual bool isHostReadyForSetPort() = 0;

protected:
    ~VstIControllerInterface() = default;
};

} // namespace Vst
} // namespace Steinberg
