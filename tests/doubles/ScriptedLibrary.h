// ScriptedLibrary: the editor library for one test. Records every call and answers what it is told.
//
//   doubles::ScriptedLibrary library(trace);
//   library.setParameter(37012000, {64, 0, 127});           // value, minimum, maximum
//   library.latencyMode = 2;    library.throwAt("start");   // more: CallScript.h
//   library.turn(37012000, 65);                             // begin, value, end on this thread
//   library.controller->getAudioPortList();                 // calls into the plug-in
//   trace: "library.setHostType(0)", "library.receiveHostMidi(90 3C 7F)"
//   EXPECT_THAT(library.complaints(), IsEmpty());           // no call came after destroy
//
// Arguments in the trace: texts as they stand, pointers as "null" or "object", note bytes in
// hexadecimal, other data as "4 bytes" (and kept in a field), observers by their parameter ID.
#pragma once

#include "editorlib/VstIEditorConnect.h"
#include "tests/doubles/CallScript.h"
#include "tests/doubles/CallText.h"
#include "tests/doubles/ScriptedObserver.h"

#include <atomic>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <optional>

namespace Steinberg {
namespace Vst {
class VstIControllerInterface;
class VstIEffectInterface;
} // namespace Vst
} // namespace Steinberg

namespace doubles {

struct ScriptedParameter {
    Steinberg::int32 value = 0;
    Steinberg::int32 minimum = 0;
    Steinberg::int32 maximum = 127;
    Steinberg::int32 stepCount = 0;
    std::map<Steinberg::int32, std::string> texts; ///< others show the decimal number
};

/** What the library writes into a buffer of 30 bytes, and its result. A text of 30 bytes fills the
    buffer and has no terminator; without a text the buffer is left alone. */
struct BufferAnswer {
    std::optional<std::string> text;
    Steinberg::int32 result = 0;
};

/** Fields are set while no call is under way; parameters, recording and callbacks are safe on any
    thread. */
class ScriptedLibrary : public Steinberg::ReservedSlots<Steinberg::Vst::VstIEditorConnect>,
                        public CallScript {
public:
    using int32 = Steinberg::int32;
    using uint32 = Steinberg::uint32;

    explicit ScriptedLibrary(Trace& trace)
    : CallScript(trace)
    {
    }
    virtual ~ScriptedLibrary() = default;

    // ---- what it answers -------------------------------------------------------------------
    void setParameter(uint32 id, const ScriptedParameter& parameter);
    void setParameterValue(uint32 id, int32 value);
    ScriptedParameter getParameter(uint32 id) const;
    ScriptedParameter defaultParameter;                           ///< of every ID that was not set
    std::function<std::string(uint32 id, int32 value)> valueText; ///< instead of the texts above

    int32 prepareResult = 0;
    int32 rectResult = 0;
    std::optional<Steinberg::ViewRect> rect{Steinberg::ViewRect(0, 0, 800, 600)};
    int32 openResult = 0;
    int32 closeResult = 0;
    int32 latencyMode = 0;
    int32 firstStartState = 0;
    int32 stateFormat = 0;
    int32 stateTextResult = 0;
    std::vector<char> state;
    std::function<BufferAnswer(int32 main)> categoryName;
    std::function<BufferAnswer(int32 main, int32 sub)> subCategoryName;
    std::function<BufferAnswer(int32 bank, int32 number)> voiceData; ///< unset: result 1
    std::function<std::vector<char>(int32 bank, int32 number)> userBank;
    std::function<std::optional<uint32>(int32 x, int32 y)> parameterAt;
    std::function<bool(const std::string& displayName)> displaysPort;
    std::function<bool(const std::string& pattern, const std::string& text)>
        matches; ///< unset: POSIX extended
    bool handlesKeys = true;
    bool handlesWheel = true;

    // ---- what it received ------------------------------------------------------------------
    Steinberg::Vst::VstIControllerInterface* controller = nullptr;
    Steinberg::Vst::VstIEffectInterface* effect = nullptr;
    void* parent = nullptr; ///< of the last prepareEditor or openEditor
    std::vector<std::vector<char>> statesSet;
    std::vector<std::u16string> stateTextsSet;
    std::vector<std::vector<char>> userBanksApplied;
    int32 mostKept = std::numeric_limits<int32>::max();    ///< bytes of each of them
    std::vector<Steinberg::Vst::VstIObserver*> registered; ///< addObserver less removeObserver

    // ---- what a user does ------------------------------------------------------------------
    /** The observer that was made last for the ID and not destroyed, or null. */
    ScriptedObserver* observer(uint32 id) const;
    std::vector<ScriptedObserver*> liveObservers() const;

    /** Sets the value and raises begin, value and end; nothing without an observer. */
    void turn(uint32 id, int32 value);

    // ---- entry points ----------------------------------------------------------------------
    bool storesConnection = true; ///< false: the entry point leaves the pointer alone
    bool storesNullConnection = false;
    bool storesObservers = true; ///< false: every observer is null
    std::function<Steinberg::Vst::VstIEditorConnect*()> connectionFor; ///< instead of this object
    void connect(Steinberg::Vst::VstIEditorConnect** out);
    void makeObserver(Steinberg::Vst::VstIObserver** out, const ObserverArguments& arguments);

    /** Calls are neither recorded nor faulted any more on the audio path, which then takes no
        memory. */
    std::atomic<bool> quiet{false};
    std::atomic<size_t> quietCalls{0};

    /** Calls after destroy(), of reserved slots, of destroyed observers, destroyed twice. */
    std::vector<std::string> complaints() const;
    void complain(const std::string& complaint);
    void noteDestroyed(const ScriptedObserver& observer);
    bool isDestroyed() const { return destroyed; }

    /** After destroy: the entry point hands out a live library again. */
    void revive() { destroyed = false; }

    // ---- VstIEditorConnect -----------------------------------------------------------------
    void destroy() override;
    void start() override { call("start"); }
    void attachService() override { call("attachService"); }
    void detachService() override { call("detachService"); }
    int32 prepareEditor(void* parent, const char* platformType) override;
    int32 getEditorRect(Steinberg::ViewRect* rect) override;
    int32 openEditor(void* parent, const Steinberg::ViewRect* rect) override;
    int32 closeEditor() override { return call("closeEditor") ? told(closeResult) : 1; }
    int32 editorOpened() override { return call("editorOpened") ? 0 : 1; }
    int32 addObserver(Steinberg::Vst::VstIObserver* observer) override;
    int32 removeObserver(Steinberg::Vst::VstIObserver* observer) override;
    void parametersReady() override { call("parametersReady"); }
    int32 getParameterStepCount(uint32 id) override;
    void hostParameterChanged(uint32 id, double value) override;
    int32 getParameterValue(uint32 id) override;
    int32 getParameterMin(uint32 id) override;
    int32 getParameterMax(uint32 id) override;
    int32 getParameterValueString(uint32 id, int32 value, std::string& text) override;
    void setStateChunk(const void* data, int32 size) override;
    std::vector<char> getStateChunk() override;
    void receiveHostMidi(const Steinberg::uint8* data, int32 length) override;
    int32 getCategoryName(int32 mainCategory, char* buffer) override;
    int32 getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer) override;
    int32 applyPreset(int32 bank, int32 number) override;
    int32 getVoiceDataString(int32 bank, int32 number, char* buffer) override;
    int32 findParameter(int32 xPos, int32 yPos, uint32& id) override;
    void onHostPortsReady(bool ready) override { call("onHostPortsReady", ready); }
    void onInitialStartFileLoad(bool load) override { call("onInitialStartFileLoad", load); }
    void syncPartToMidiChannel(int32 channel) override { call("syncPartToMidiChannel", channel); }
    std::vector<char> getUserBankData(int32 bank, int32 number) override;
    int32 applyUserBank(int32 bank, int32 number, const char* data, int32 size) override;
    void setEffectInterface(Steinberg::Vst::VstIEffectInterface* newEffect) override;
    void setControllerInterface(Steinberg::Vst::VstIControllerInterface* newController) override;
    int32 getLatencyMode() override { return call("getLatencyMode") ? told(latencyMode) : 0; }
    int32 getFirstStartState() override;
    bool isDisplayAudioPort(const char* displayName) override;
    void setEffectOption(bool option) override { call("setEffectOption", option); }
    bool matchRegularExpression(const char* pattern, const char* text) override;
    int32 onFocus(bool focused) override { return call("onFocus", focused) ? 0 : 1; }
    bool onKeyDown(char character, Steinberg::int16 keyCode, Steinberg::int16 modifiers) override;
    bool onKeyUp(char character, Steinberg::int16 keyCode, Steinberg::int16 modifiers) override;
    bool onWheel(float distance) override;
    int32 setStateText(const Steinberg::char16* text) override;
    void setHostType(int32 hostType) override { call("setHostType", hostType); }
    int32 getStateFormat() override { return call("getStateFormat") ? told(stateFormat) : 0; }

private:
    template <typename... Arguments>
    bool call(const char* operation, const Arguments&... arguments)
    {
        const auto text = callText("library", operation, arguments...);
        if (destroyed)
            complain(text + " after destroy");
        return called(text);
    }
    void reserved(int slot) override;
    bool isQuiet();
    std::string nameOf(const Steinberg::Vst::VstIObserver* observer) const;

    mutable std::mutex mutex;
    std::map<uint32, ScriptedParameter> parameters;
    std::deque<std::unique_ptr<ScriptedObserver>> observers;
    std::vector<std::string> complaintList;
    std::atomic<bool> destroyed{false};
};

} // namespace doubles
