// WatchedLibrary: an editor library's main object, with each call named before it is made.
#pragma once

#include "editorlib/VstIEditorConnect.h"
#include "tools/check-library/Journal.h"

#include <mutex>
#include <set>
#include <string>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** Passes every call on and says what went wrong inside: an exception, which goes on to the caller,
    and bytes written behind a buffer's end, of each operation once. [any thread] */
class WatchedLibrary : public VstIEditorConnect {
public:
    /** @param watched, newJournal outlive this object */
    WatchedLibrary(VstIEditorConnect& watched, Journal& newJournal)
    : library(watched)
    , journal(newJournal)
    {
    }
    virtual ~WatchedLibrary() = default;
    WatchedLibrary(const WatchedLibrary&) = delete;
    WatchedLibrary& operator=(const WatchedLibrary&) = delete;

    /** For what must not wait for the journal. */
    VstIEditorConnect& unwatched() { return library; }

    void destroy() override;
    void start() override;
    void attachService() override;
    void detachService() override;
    int32 prepareEditor(void* parent, const char* platformType) override;
    int32 getEditorRect(ViewRect* rect) override;
    int32 openEditor(void* parent, const ViewRect* rect) override;
    int32 closeEditor() override;
    int32 editorOpened() override;
    int32 addObserver(VstIObserver* observer) override;
    int32 removeObserver(VstIObserver* observer) override;
    void parametersReady() override;
    int32 getParameterStepCount(uint32 id) override;
    void hostParameterChanged(uint32 id, double value) override;
    int32 getParameterValue(uint32 id) override;
    int32 getParameterMin(uint32 id) override;
    int32 getParameterMax(uint32 id) override;
    int32 getParameterValueString(uint32 id, int32 value, std::string& text) override;
    void setStateChunk(const void* data, int32 size) override;
    std::vector<char> getStateChunk() override;
    void receiveHostMidi(const uint8* data, int32 length) override;
    void reserved21() override;
    int32 getCategoryName(int32 mainCategory, char* buffer) override;
    int32 getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer) override;
    int32 applyPreset(int32 bank, int32 number) override;
    int32 getVoiceDataString(int32 bank, int32 number, char* buffer) override;
    int32 findParameter(int32 xPos, int32 yPos, uint32& id) override;
    void onHostPortsReady(bool state) override;
    void onInitialStartFileLoad(bool state) override;
    void syncPartToMidiChannel(int32 channel) override;
    std::vector<char> getUserBankData(int32 bank, int32 number) override;
    int32 applyUserBank(int32 bank, int32 number, const char* data, int32 size) override;
    void setEffectInterface(VstIEffectInterface* effect) override;
    void setControllerInterface(VstIControllerInterface* controller) override;
    void reserved34() override;
    int32 getLatencyMode() override;
    int32 getFirstStartState() override;
    bool isDisplayAudioPort(const char* displayName) override;
    void setEffectOption(bool option) override;
    bool matchRegularExpression(const char* pattern, const char* text) override;
    int32 onFocus(bool state) override;
    bool onKeyDown(char character, int16 keyCode, int16 modifiers) override;
    bool onKeyUp(char character, int16 keyCode, int16 modifiers) override;
    bool onWheel(float distance) override;
    int32 setStateText(const char16* text) override;
    void setHostType(int32 hostType) override;
    int32 getStateFormat() override;

private:
    template <typename Call, typename... Arguments>
    auto watch(const char* operation, Call&& call, const Arguments&... arguments);
    template <typename Call>
    int32 fill(const char* operation, char* buffer, Call&& call);
    void sayThrown(const char* operation, const std::string& call, const std::string& what);
    bool isFirst(const std::string& fault);

    VstIEditorConnect& library;
    Journal& journal;
    std::mutex mutex;
    std::set<std::string> told;
};

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
