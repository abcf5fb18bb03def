// SimulatedLibrary: the simulated editor library as the plug-in sees it.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "simulator/Instrument.h"

#include <atomic>
#include <functional>
#include <memory>

namespace Steinberg {
namespace Vst {
namespace simulator {

/** Every operation accepts any arguments. Result codes: 0 done, 1 not done. */
class SimulatedLibrary final : public ReservedSlots<VstIEditorConnect> {
public:
    static constexpr int32 width = 1016; ///< of the editor, in pixels
    static constexpr int32 height = 710;

    /** @param end the last thing that destroy calls; deletes this object */
    SimulatedLibrary(std::shared_ptr<Instrument> instrument, std::function<void()> end);

    int32 hostType() const { return host; }
    bool editorOpen() const { return open; }
    void chooseLatencyMode(int32 mode) { latencyMode = mode; }
    void chooseStateFormat(int32 format) { stateFormat = format; }
    void chooseFirstStart(int32 state) { firstStart = state; }

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
    int32 getLatencyMode() override { return latencyMode; }
    int32 getFirstStartState() override { return firstStart; }
    bool isDisplayAudioPort(const char* displayName) override;
    void setEffectOption(bool option) override;
    bool matchRegularExpression(const char* pattern, const char* text) override;
    int32 onFocus(bool state) override;
    bool onKeyDown(char character, int16 keyCode, int16 modifiers) override;
    bool onKeyUp(char character, int16 keyCode, int16 modifiers) override;
    bool onWheel(float distance) override;
    int32 setStateText(const char16* text) override;
    void setHostType(int32 hostType) override;
    int32 getStateFormat() override { return stateFormat; }

private:
    const std::shared_ptr<Instrument> instrument;
    const std::function<void()> end;
    std::atomic<int32> host{-1};
    std::atomic<int32> latencyMode{1};
    std::atomic<int32> stateFormat{0};
    std::atomic<int32> firstStart{0};
    std::atomic<bool> open{false};
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
