// VoiceLibrary: an editor library that only has voices.
#pragma once

#include "editorlib/VstIEditorConnect.h"

#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace doubles {

/** What goes into a buffer of 30 bytes. A text of 30 fills it and has no terminator. */
struct VoiceText {
    std::optional<std::string> text;
    Steinberg::int32 result = 0;
};

class VoiceLibrary : public Steinberg::Vst::VstIEditorConnect {
public:
    using int32 = Steinberg::int32;
    using uint32 = Steinberg::uint32;

    std::function<VoiceText(int32 main)> categoryName;
    std::function<VoiceText(int32 main, int32 sub)> subCategoryName;
    std::function<VoiceText(int32 bank, int32 number)> voiceData;
    std::function<std::vector<char>(int32 bank, int32 number)> userBank;

    int32 getCategoryName(int32 main, char* buffer) override
    {
        return fill(categoryName(main), buffer);
    }
    int32 getSubCategoryName(int32 main, int32 sub, char* buffer) override
    {
        return fill(subCategoryName(main, sub), buffer);
    }
    int32 getVoiceDataString(int32 bank, int32 number, char* buffer) override
    {
        return fill(voiceData(bank, number), buffer);
    }
    std::vector<char> getUserBankData(int32 bank, int32 number) override
    {
        return userBank(bank, number);
    }

    void destroy() override {}
    void start() override {}
    void attachService() override {}
    void detachService() override {}
    int32 prepareEditor(void*, const char*) override { return 1; }
    int32 getEditorRect(Steinberg::ViewRect*) override { return 1; }
    int32 openEditor(void*, const Steinberg::ViewRect*) override { return 1; }
    int32 closeEditor() override { return 1; }
    int32 editorOpened() override { return 1; }
    int32 addObserver(Steinberg::Vst::VstIObserver*) override { return 1; }
    int32 removeObserver(Steinberg::Vst::VstIObserver*) override { return 1; }
    void parametersReady() override {}
    int32 getParameterStepCount(uint32) override { return 0; }
    void hostParameterChanged(uint32, double) override {}
    int32 getParameterValue(uint32) override { return 0; }
    int32 getParameterMin(uint32) override { return 0; }
    int32 getParameterMax(uint32) override { return 0; }
    int32 getParameterValueString(uint32, int32, std::string&) override { return 1; }
    void setStateChunk(const void*, int32) override {}
    std::vector<char> getStateChunk() override { return {}; }
    void receiveHostMidi(const Steinberg::uint8*, int32) override {}
    void reserved21() override {}
    int32 applyPreset(int32, int32) override { return 1; }
    int32 findParameter(int32, int32, uint32&) override { return 1; }
    void onHostPortsReady(bool) override {}
    void onInitialStartFileLoad(bool) override {}
    void syncPartToMidiChannel(int32) override {}
    int32 applyUserBank(int32, int32, const char*, int32) override { return 1; }
    void setEffectInterface(Steinberg::Vst::VstIEffectInterface*) override {}
    void setControllerInterface(Steinberg::Vst::VstIControllerInterface*) override {}
    void reserved34() override {}
    int32 getLatencyMode() override { return 0; }
    int32 getFirstStartState() override { return 0; }
    bool isDisplayAudioPort(const char*) override { return false; }
    void setEffectOption(bool) override {}
    bool matchRegularExpression(const char*, const char*) override { return false; }
    int32 onFocus(bool) override { return 1; }
    bool onKeyDown(char, Steinberg::int16, Steinberg::int16) override { return false; }
    bool onKeyUp(char, Steinberg::int16, Steinberg::int16) override { return false; }
    bool onWheel(float) override { return false; }
    int32 setStateText(const Steinberg::char16*) override { return 1; }
    void setHostType(int32) override {}
    int32 getStateFormat() override { return 0; }

private:
    static int32 fill(const VoiceText& answer, char* buffer)
    {
        if (answer.text)
            std::strncpy(buffer, answer.text->c_str(), 30);
        return answer.result;
    }
};

} // namespace doubles
