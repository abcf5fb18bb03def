// VstIEditorConnect: the editor library's main object. All knowledge of the instrument is
// behind it.
#pragma once

#include "editorlib/VstIObserver.h"
#include "pluginterfaces/base/ftypes.h"
#include "pluginterfaces/gui/iplugview.h"

#include <string>
#include <vector>

namespace Steinberg {
namespace Vst {

class VstIControllerInterface;
class VstIEffectInterface;

/** One object per bound controller, with 47 slots. Not reference counted: the controller calls
    destroy when it has loaded the library itself; an object of the host-side service stays alive.

    Parameter IDs are VST parameter IDs. Texts are zero-terminated 8-bit texts in UTF-8. The
    plug-in does not rely on the library: any call may throw, and counts then as one that did
    nothing (CallGuard.h).

    Unless said otherwise a call is made on the host's main thread. */
class VstIEditorConnect {
public:
    /** Destroys the object. */
    virtual void destroy() = 0;
    /** Starts work. Called once the library has the controller interface and the host type. */
    virtual void start() = 0;
    /** The plug-in begins, and ends, to use this object, which a service handed over. */
    virtual void attachService() = 0;
    virtual void detachService() = 0;

    /** Prepares the editor's view inside the host's view.
        @param parent the host's view, an NSView, borrowed
        @param platformType "NSView"
        @return 0 when the editor can be opened */
    virtual int32 prepareEditor(void* parent, const char* platformType) = 0;
    /** The editor's rectangle in the host's pixels. @return 0 when rect was set */
    virtual int32 getEditorRect(ViewRect* rect) = 0;
    /** Opens the editor's view. @param rect what getEditorRect set; the result is not used */
    virtual int32 openEditor(void* parent, const ViewRect* rect) = 0;
    /** @return 0 when the editor closed */
    virtual int32 closeEditor() = 0;
    /** Called after openEditor; the result is not used. */
    virtual int32 editorOpened() = 0;

    /** The library begins, and ends, to use an observer, which the controller owns. The results are
        not used. */
    virtual int32 addObserver(VstIObserver* observer) = 0;
    virtual int32 removeObserver(VstIObserver* observer) = 0;
    /** The host has connected processor and controller, and every parameter has the
        library's value. */
    virtual void parametersReady() = 0;

    /** The VST parameter's step count; 0 for a continuous one. */
    virtual int32 getParameterStepCount(uint32 id) = 0;
    /** The host automated a parameter; value is normalized, 0 to 1. [audio thread] */
    virtual void hostParameterChanged(uint32 id, double value) = 0;
    /** The parameter's current editor value, and the limits of its range. */
    virtual int32 getParameterValue(uint32 id) = 0;
    virtual int32 getParameterMin(uint32 id) = 0;
    virtual int32 getParameterMax(uint32 id) = 0;
    /** Sets text to what the editor shows for an editor value; the result is not used. */
    virtual int32 getParameterValueString(uint32 id, int32 value, std::string& text) = 0;

    /** Restores a state that getStateChunk gave. data has size bytes, borrowed for the call. */
    virtual void setStateChunk(const void* data, int32 size) = 0;
    virtual std::vector<char> getStateChunk() = 0;

    /** A note from the host as three MIDI bytes, borrowed for the call. [audio thread] */
    virtual void receiveHostMidi(const uint8* data, int32 length) = 0;

    virtual void reserved21() = 0;

    /** Names of the instrument's voice categories, by index. buffer has 30 bytes; a text of 30
        characters has no terminator. @return 0 when the name was written */
    virtual int32 getCategoryName(int32 mainCategory, char* buffer) = 0;
    virtual int32 getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer) = 0;

    /** Selects a voice. @param bank a VoiceBank::Bank; the result is not used */
    virtual int32 applyPreset(int32 bank, int32 number) = 0;
    /** Writes a voice's text, "category code:...:name", into 30 bytes, as above.
        @return 0 when it was written */
    virtual int32 getVoiceDataString(int32 bank, int32 number, char* buffer) = 0;

    /** The parameter shown at a position of the editor view. @return 0 when id was set */
    virtual int32 findParameter(int32 xPos, int32 yPos, uint32& id) = 0;

    /** The host's ports can be connected. @param state false while the start file is still to
        be loaded */
    virtual void onHostPortsReady(bool state) = 0;
    /** The same moment, after onHostPortsReady. @param state what setInitialStartFileLoad
        last set */
    virtual void onInitialStartFileLoad(bool state) = 0;
    /** Shows the part that plays on a MIDI channel, 0 to 15. */
    virtual void syncPartToMidiChannel(int32 channel) = 0;

    /** A user bank's data, which only the library can read. */
    virtual std::vector<char> getUserBankData(int32 bank, int32 number) = 0;
    /** Loads a user bank. data has size bytes, borrowed for the call; the result is not used. */
    virtual int32 applyUserBank(int32 bank, int32 number, const char* data, int32 size) = 0;

    /** Gives the library the operations of the processor and of the controller. After a call with
        null the library must not use them any more. */
    virtual void setEffectInterface(VstIEffectInterface* effect) = 0;
    virtual void setControllerInterface(VstIControllerInterface* controller) = 0;

    virtual void reserved34() = 0;

    /** The instrument's latency: 1 ms for 0 and 1, 5 ms for 2, none for other numbers.
        [host main thread, or the thread on which the host asks for the latency] */
    virtual int32 getLatencyMode() = 0;
    /** 1 at the editor's first start on this machine. */
    virtual int32 getFirstStartState() = 0;
    /** Whether the host's audio input of this name is to be shown at the first start. */
    virtual bool isDisplayAudioPort(const char* displayName) = 0;
    /** Called after setEffectInterface; option is always false. */
    virtual void setEffectOption(bool option) = 0;
    /** Whether text matches pattern, a POSIX extended regular expression. */
    virtual bool matchRegularExpression(const char* pattern, const char* text) = 0;

    /** The view got (true) or lost the keyboard focus; the result is not used. */
    virtual int32 onFocus(bool state) = 0;
    /** Keys and the wheel. @return true when the editor used the event */
    virtual bool onKeyDown(char character, int16 keyCode, int16 modifiers) = 0;
    virtual bool onKeyUp(char character, int16 keyCode, int16 modifiers) = 0;
    virtual bool onWheel(float distance) = 0;

    /** Restores a state that is text. text is zero-terminated UTF-16, borrowed for the call.
        @return 0 on success */
    virtual int32 setStateText(const char16* text) = 0;
    /** Tells the kind of host: 0 one of the Cubase family, 1 the maker's stand-alone host,
        2 another. */
    virtual void setHostType(int32 hostType) = 0;
    /** 1 when a state is to be restored as text; any other number: as bytes. */
    virtual int32 getStateFormat() = 0;

protected:
    ~VstIEditorConnect() = default;
};

} // namespace Vst
} // namespace Steinberg
