// VstIEditorConnect: the editor library's main object, everything that knows the instrument.
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

/** One object per bound controller, 47 slots. Not reference counted: a library that the controller
    loaded is ended with destroy, one that came from the host-side service lives on without us.

    Parameter IDs are VST parameter IDs. Texts are zero-terminated 8-bit texts in UTF-8. The library
    is code in our process, but its answers are not trusted: it may throw, and callers treat a call
    that threw as one that did nothing (CallGuard.h).

    Unless said otherwise a call is made on the host's main thread. */
class VstIEditorConnect {
public:
    /** Ends the object and its life in this process; the pointer is dead afterwards. */
    virtual void destroy() = 0;
    /** Starts work, once the controller interface and the host type are known. */
    virtual void start() = 0;
    /** A service handed this object over: it is in use, or no longer in use. */
    virtual void attachService() = 0;
    virtual void detachService() = 0;

    /** Prepares a native view below parent. @return 0 to go on */
    virtual int32 prepareEditor(void* parent, const char* platformType) = 0;
    /** The editor's rectangle in the host's pixels. @return 0 when rect was set */
    virtual int32 getEditorRect(ViewRect* rect) = 0;
    virtual int32 openEditor(void* parent, const ViewRect* rect) = 0;
    /** @return 0 when the editor closed */
    virtual int32 closeEditor() = 0;
    virtual int32 editorOpened() = 0;

    /** Starts and ends the library's use of an observer, which stays the controller's. */
    virtual int32 addObserver(VstIObserver* observer) = 0;
    virtual int32 removeObserver(VstIObserver* observer) = 0;
    /** The host and this plug-in have been connected and every parameter is up to date. */
    virtual void parametersReady() = 0;

    virtual int32 getParameterStepCount(uint32 id) = 0;
    /** The host automated a parameter; value is normalized, 0 to 1. [audio thread] */
    virtual void hostParameterChanged(uint32 id, double value) = 0;
    /** The parameter's present editor value, and its range. */
    virtual int32 getParameterValue(uint32 id) = 0;
    virtual int32 getParameterMin(uint32 id) = 0;
    virtual int32 getParameterMax(uint32 id) = 0;
    /** Sets text to what the editor shows for the editor value. */
    virtual int32 getParameterValueString(uint32 id, int32 value, std::string& text) = 0;

    /** Restores what getStateChunk gave. data is size bytes, borrowed for the call. */
    virtual void setStateChunk(const void* data, int32 size) = 0;
    virtual std::vector<char> getStateChunk() = 0;

    /** A note from the host as three MIDI bytes, borrowed for the call. [audio thread] */
    virtual void receiveHostMidi(const uint8* data, int32 length) = 0;

    virtual void reserved21() = 0;

    /** Category names of the instrument. buffer has 30 bytes; a text of 30 characters has no
        terminator. @return 0 when the name was written */
    virtual int32 getCategoryName(int32 mainCategory, char* buffer) = 0;
    virtual int32 getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer) = 0;

    /** Selects a voice: bank is a VoiceBank::Bank value. */
    virtual int32 applyPreset(int32 bank, int32 number) = 0;
    /** A voice's "category code:...:name" text into 30 bytes, as above. @return 0 when written */
    virtual int32 getVoiceDataString(int32 bank, int32 number, char* buffer) = 0;

    /** The parameter shown at a position of the editor view. @return 0 when id was set */
    virtual int32 findParameter(int32 xPos, int32 yPos, uint32& id) = 0;

    virtual void onHostPortsReady(bool state) = 0;
    virtual void onInitialStartFileLoad(bool state) = 0;
    /** Shows the part that plays on a MIDI channel, 0 to 15. */
    virtual void syncPartToMidiChannel(int32 channel) = 0;

    /** A user bank's data, opaque to us, and its way back (size bytes, borrowed for the call). */
    virtual std::vector<char> getUserBankData(int32 bank, int32 number) = 0;
    virtual int32 applyUserBank(int32 bank, int32 number, const char* data, int32 size) = 0;

    /** The processor's and the controller's operations for the library; null takes them back. */
    virtual void setEffectInterface(VstIEffectInterface* effect) = 0;
    virtual void setControllerInterface(VstIControllerInterface* controller) = 0;

    virtual void reserved34() = 0;

    /** 0 or 1: 1 ms, 2: 5 ms, else none.
        [host main thread, or where the host asks for the latency] */
    virtual int32 getLatencyMode() = 0;
    /** 1 at the editor's first start on this machine. */
    virtual int32 getFirstStartState() = 0;
    virtual bool isDisplayAudioPort(const char* displayName) = 0;
    virtual void setEffectOption(bool option) = 0;
    virtual bool matchRegularExpression(const char* pattern, const char* text) = 0;

    virtual int32 onFocus(bool state) = 0;
    /** Keys and the wheel. @return true when the editor used the event */
    virtual bool onKeyDown(char character, int16 keyCode, int16 modifiers) = 0;
    virtual bool onKeyUp(char character, int16 keyCode, int16 modifiers) = 0;
    virtual bool onWheel(float distance) = 0;

    /** Restores a text state: zero-terminated UTF-16, borrowed for the call. @return 0 on
        success */
    virtual int32 setStateText(const char16* text) = 0;
    /** 0: a host of the Cubase family, 1: the maker's stand-alone host, 2: any other. */
    virtual void setHostType(int32 hostType) = 0;
    /** 1 when the library wants a state as text, anything else for bytes. */
    virtual int32 getStateFormat() = 0;

protected:
    ~VstIEditorConnect() = default;
};

} // namespace Vst
} // namespace Steinberg
