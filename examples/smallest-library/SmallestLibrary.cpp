// The smallest editor library that plays: it has the plug-in's parameters and no instrument, and it
// sends each note back to the host's "Midi Out". What a real one has to do: docs/editor-library.md.
#include "editorlib/EntryPoints.h"
#include "editorlib/VstIControllerInterface.h"
#include "editorlib/VstIEditorConnect.h"
#include "editorlib/VstIEffectInterface.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <utility>

namespace {
using namespace Steinberg;
using namespace Steinberg::Vst;

constexpr uint32 kEditFlag = 201005000; ///< 0 or 1; all other parameters are 0 to 127

struct Parameter {
    std::atomic<int32> value{0};
    std::atomic<bool> isFromHost{false}; ///< the host set the value, so it is not told
};

/** Tells the plug-in the parameter's new value at the next tick, on the host's main thread. */
struct Observer final : VstIObserver {
    void* owner = nullptr;
    uint32 id = 0;
    ValueChangedCallback valueChanged = nullptr;
    Parameter* parameter = nullptr;
    std::atomic<VstIControllerInterface*>* controller = nullptr;
    int32 told = 0;

    void checkChange() override
    {
        const int32 value = parameter->value;
        if (std::exchange(told, value) == value)
            return;
        if (!parameter->isFromHost.exchange(false))
            valueChanged(owner, id, value);
        else if (auto* plugIn = controller->load())
            plugIn->setVSTManageParameter(id, value);
    }
    void destroy() override { delete this; }
    // clang-format off
    void reserved1() override {} void reserved2() override {} void reserved3() override {}
    void reserved4() override {} void reserved5() override {}
    // clang-format on
};

/** One for each instance of the plug-in. Nothing that the audio thread calls waits or allocates. */
struct Library final : VstIEditorConnect {
    std::map<uint32, Parameter> parameters; ///< made by addObserver, when the plug-in starts
    std::atomic<VstIControllerInterface*> controller{nullptr};
    std::atomic<VstIEffectInterface*> effect{nullptr};

    void destroy() override { delete this; }
    int32 addObserver(VstIObserver* added) override
    {
        auto* observer = static_cast<Observer*>(added);
        observer->parameter = &parameters[observer->id];
        observer->controller = &controller;
        return 0;
    }
    int32 removeObserver(VstIObserver*) override { return 0; }
    void setControllerInterface(VstIControllerInterface* given) override { controller = given; }
    void setEffectInterface(VstIEffectInterface* given) override { effect = given; }

    int32 getParameterMin(uint32) override { return 0; }
    int32 getParameterMax(uint32 id) override { return id == kEditFlag ? 1 : 127; }
    int32 getParameterStepCount(uint32 id) override { return getParameterMax(id); }
    int32 getParameterValue(uint32 id) override { return parameters[id].value; }
    int32 getParameterValueString(uint32, int32 value, std::string& text) override
    {
        text = std::to_string(value);
        return 0;
    }
    void hostParameterChanged(uint32 id, double value) override
    {
        const auto found = parameters.find(id);
        if (found == parameters.end())
            return;
        const auto wanted = static_cast<int32>(value * getParameterMax(id) + 0.5);
        found->second.isFromHost = found->second.value != wanted;
        found->second.value = wanted;
    }
    void receiveHostMidi(const uint8* data, int32 length) override
    {
        if (auto* output = effect.load())
            output->writeMidi(data, length);
    }
    std::vector<char> getStateChunk() override
    {
        std::vector<char> bytes;
        for (const auto& parameter : parameters)
            bytes.push_back(static_cast<char>(parameter.second.value));
        return bytes;
    }
    void setStateChunk(const void* data, int32 size) override
    {
        const auto* byte = static_cast<const uint8*>(data);
        if (size == static_cast<int32>(parameters.size()))
            for (auto& [id, parameter] : parameters)
                parameter.value = std::min<int32>(*byte++, getParameterMax(id));
    }

    // What it does not have: an editor, voices, user banks, ports, a latency, a state as text.
    // clang-format off
    void start() override {} void attachService() override {} void detachService() override {}
    void parametersReady() override {} void setHostType(int32) override {}
    void setEffectOption(bool) override {} void syncPartToMidiChannel(int32) override {}
    void onHostPortsReady(bool) override {} void onInitialStartFileLoad(bool) override {}
    void reserved21() override {} void reserved34() override {}
    int32 prepareEditor(void*, const char*) override { return 1; }
    int32 getEditorRect(ViewRect*) override { return 1; } int32 onFocus(bool) override { return 0; }
    int32 openEditor(void*, const ViewRect*) override { return 1; }
    int32 editorOpened() override { return 1; } bool onWheel(float) override { return false; }
    int32 findParameter(int32, int32, uint32&) override { return 1; }
    bool onKeyDown(char, int16, int16) override { return false; }
    bool onKeyUp(char, int16, int16) override { return false; }
    int32 getVoiceDataString(int32, int32, char*) override { return 1; }
    int32 getCategoryName(int32, char*) override { return 1; }
    int32 getSubCategoryName(int32, int32, char*) override { return 1; }
    int32 applyPreset(int32, int32) override { return 1; }
    std::vector<char> getUserBankData(int32, int32) override { return {}; }
    int32 applyUserBank(int32, int32, const char*, int32) override { return 1; }
    bool isDisplayAudioPort(const char*) override { return false; }
    bool matchRegularExpression(const char*, const char*) override { return false; }
    int32 getFirstStartState() override { return 0; } int32 getStateFormat() override { return 0; }
    int32 getLatencyMode() override { return -1; } int32 closeEditor() override { return 0; }
    int32 setStateText(const char16*) override { return 1; }
    // clang-format on
};
} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))
EXPORTED void getVSTEditorConnectObject(VstIEditorConnect** out)
{
    *out = new Library;
}

EXPORTED void getVSTObserverObject(VstIObserver** out, void* owner, int vstParamId, int, int, int,
                                   ValueChangedCallback valueChanged, VstIObserver::ParamModeType,
                                   EditCallback, EditCallback)
{
    auto* observer = new Observer;
    observer->owner = owner;
    observer->id = static_cast<uint32>(vstParamId);
    observer->valueChanged = valueChanged;
    *out = observer;
}
