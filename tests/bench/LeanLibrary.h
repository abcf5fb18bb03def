// LeanLibrary: an editor library that does as little as one can, for the floors.
//
// It answers from fields and tables, counts what it is given so that no call can be left out by the
// compiler, and keeps no record. Everything in it is compiled as what ships is.
#pragma once

#include "editorlib/ReservedSlots.h"

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace bench {

using Steinberg::char16;
using Steinberg::int16;
using Steinberg::int32;
using Steinberg::uint32;
using Steinberg::uint8;
using Steinberg::ViewRect;

/** An observer of a parameter that never changes: reads what it watches and finds it as it was. */
class LeanObserver final : public Steinberg::ReservedSlots<Steinberg::Vst::VstIObserver> {
public:
    void destroy() override {}
    void checkChange() override { changes += watched != known ? 1 : 0; }

    volatile int watched = 0;
    int known = 0;
    int changes = 0;
};

/** Every parameter has the editor values 0 to highest, with the same texts. */
class LeanLibrary final : public Steinberg::ReservedSlots<Steinberg::Vst::VstIEditorConnect> {
public:
    /** @param highest at most 127 */
    explicit LeanLibrary(int32 highest = 127);

    /** The library whose observers the entry point in this program gives. */
    static LeanLibrary* current;

    /** The next of the observers, which are there beforehand and used again and again. */
    LeanObserver* nextObserver() { return &observers[nextIndex++ % observers.size()]; }

    void destroy() override {}
    void start() override {}
    void attachService() override {}
    void detachService() override {}
    int32 prepareEditor(void*, const char*) override { return 1; }
    int32 getEditorRect(ViewRect*) override { return 1; }
    int32 openEditor(void*, const ViewRect*) override { return 1; }
    int32 closeEditor() override { return 1; }
    int32 editorOpened() override { return 0; }
    int32 addObserver(Steinberg::Vst::VstIObserver*) override { return 0; }
    int32 removeObserver(Steinberg::Vst::VstIObserver*) override { return 0; }
    void parametersReady() override {}
    int32 getParameterStepCount(uint32) override { return 0; }
    void hostParameterChanged(uint32 id, double value) override
    {
        lastId = id;
        sum += value;
        ++changes;
    }
    int32 getParameterValue(uint32) override { return 0; }
    int32 getParameterMin(uint32) override { return 0; }
    int32 getParameterMax(uint32) override { return highestValue; }
    int32 getParameterValueString(uint32, int32 value, std::string& text) override
    {
        text = texts[static_cast<size_t>(value)];
        return 0;
    }
    void setStateChunk(const void*, int32 size) override { lastSize = size; }
    std::vector<char> getStateChunk() override { return state; }
    void receiveHostMidi(const uint8* data, int32 length) override
    {
        bytes += static_cast<unsigned>(data[0] + data[1] + data[2] + length);
    }
    int32 getCategoryName(int32, char* text) override { return answer(text, "Organ"); }
    int32 getSubCategoryName(int32, int32, char* text) override { return answer(text, "Pipe"); }
    int32 applyPreset(int32, int32) override { return 0; }
    int32 getVoiceDataString(int32, int32, char* text) override { return answer(text, "32:Voice"); }
    int32 findParameter(int32, int32, uint32&) override { return 1; }
    void onHostPortsReady(bool) override {}
    void onInitialStartFileLoad(bool) override {}
    void syncPartToMidiChannel(int32) override {}
    std::vector<char> getUserBankData(int32, int32) override { return bank; }
    int32 applyUserBank(int32, int32, const char*, int32 size) override
    {
        lastSize = size;
        return 0;
    }
    void setEffectInterface(Steinberg::Vst::VstIEffectInterface*) override {}
    void setControllerInterface(Steinberg::Vst::VstIControllerInterface*) override {}
    int32 getLatencyMode() override { return 0; }
    int32 getFirstStartState() override { return 0; }
    bool isDisplayAudioPort(const char*) override { return false; }
    void setEffectOption(bool) override {}
    bool matchRegularExpression(const char*, const char*) override { return false; }
    int32 onFocus(bool) override { return 0; }
    bool onKeyDown(char, int16, int16) override { return false; }
    bool onKeyUp(char, int16, int16) override { return false; }
    bool onWheel(float) override { return false; }
    int32 setStateText(const char16*) override { return 0; }
    void setHostType(int32) override {}
    int32 getStateFormat() override { return 0; }

    std::array<std::string, 128> texts;
    std::vector<char> state;
    std::vector<char> bank; ///< of every user bank
    int32 lastSize = 0;     ///< of the state or the bank that was given last
    double sum = 0;
    int changes = 0; ///< calls of hostParameterChanged
    uint32 lastId = 0;
    unsigned bytes = 0;

private:
    static int32 answer(char* buffer, const char* text)
    {
        std::strcpy(buffer, text);
        return 0;
    }

    std::vector<LeanObserver> observers;
    size_t nextIndex = 0;
    int32 highestValue;
};

/** The same library. The compiler does not know its class here, so that its calls stay virtual. */
Steinberg::Vst::VstIEditorConnect& opaque(LeanLibrary& library);

/** The library's handle: this program's own, since the entry point is in it. */
void* libraryHandle();

} // namespace bench
