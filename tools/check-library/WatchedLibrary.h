// WatchedLibrary: an editor library's main object, with each call named before it is made.
#pragma once

#include "editorlib/ReservedSlots.h"
#include "tools/check-library/Journal.h"

#include <exception>
#include <initializer_list>
#include <mutex>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

/** An argument as the journal shows it: empty for what the call fills in, and for a pointer only
    whether it is null. */
template <typename Argument>
std::string shownArgument(const Argument& argument)
{
    if constexpr (std::is_same_v<Argument, std::string> ||
                  std::is_convertible_v<Argument, const ViewRect*>)
        return "";
    else if constexpr (std::is_same_v<Argument, bool>)
        return argument ? "true" : "false";
    else if constexpr (std::is_same_v<Argument, const char*>)
        return argument ? "\"" + std::string(argument) + "\"" : "null";
    else if constexpr (std::is_pointer_v<Argument>)
        return argument ? "object" : "null";
    else
        return (std::ostringstream() << +argument).str();
}

/** "operation(argument, argument)" */
template <typename... Arguments>
std::string watchedCallText(const std::string& name, const Arguments&... arguments)
{
    std::string list;
    for (const auto& shown : std::initializer_list<std::string>{shownArgument(arguments)...})
        if (!shown.empty())
            list += (list.empty() ? "" : ", ") + shown;
    return name + "(" + list + ")";
}

/** Passes every call on. Tells the journal, once for each operation, of an exception, which goes on
    to the caller, and of bytes written behind a buffer's end. [any thread] */
class WatchedLibrary : public ReservedSlots<VstIEditorConnect> {
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

    using Api = VstIEditorConnect;

    /** The library itself, for calls that must not wait for the journal. */
    VstIEditorConnect& unwatched() { return library; }

    void destroy() override { pass("destroy", &Api::destroy); }
    void start() override { pass("start", &Api::start); }
    void attachService() override { pass("attachService", &Api::attachService); }
    void detachService() override { pass("detachService", &Api::detachService); }
    int32 prepareEditor(void* parent, const char* platformType) override
    {
        return pass("prepareEditor", &Api::prepareEditor, parent, platformType);
    }
    int32 getEditorRect(ViewRect* rect) override
    {
        return pass("getEditorRect", &Api::getEditorRect, rect);
    }
    int32 openEditor(void* parent, const ViewRect* rect) override
    {
        return pass("openEditor", &Api::openEditor, parent, rect);
    }
    int32 closeEditor() override { return pass("closeEditor", &Api::closeEditor); }
    int32 editorOpened() override { return pass("editorOpened", &Api::editorOpened); }
    int32 addObserver(VstIObserver* observer) override
    {
        return pass("addObserver", &Api::addObserver, observer);
    }
    int32 removeObserver(VstIObserver* observer) override
    {
        return pass("removeObserver", &Api::removeObserver, observer);
    }
    void parametersReady() override { pass("parametersReady", &Api::parametersReady); }
    int32 getParameterStepCount(uint32 id) override
    {
        return pass("getParameterStepCount", &Api::getParameterStepCount, id);
    }
    void hostParameterChanged(uint32 id, double value) override
    {
        pass("hostParameterChanged", &Api::hostParameterChanged, id, value);
    }
    int32 getParameterValue(uint32 id) override
    {
        return pass("getParameterValue", &Api::getParameterValue, id);
    }
    int32 getParameterMin(uint32 id) override
    {
        return pass("getParameterMin", &Api::getParameterMin, id);
    }
    int32 getParameterMax(uint32 id) override
    {
        return pass("getParameterMax", &Api::getParameterMax, id);
    }
    int32 getParameterValueString(uint32 id, int32 value, std::string& text) override
    {
        return pass("getParameterValueString", &Api::getParameterValueString, id, value, text);
    }
    void setStateChunk(const void* data, int32 size) override
    {
        pass("setStateChunk", &Api::setStateChunk, data, size);
    }
    std::vector<char> getStateChunk() override
    {
        return pass("getStateChunk", &Api::getStateChunk);
    }
    void receiveHostMidi(const uint8* data, int32 length) override
    {
        pass("receiveHostMidi", &Api::receiveHostMidi, data, length);
    }
    int32 getCategoryName(int32 mainCategory, char* buffer) override;
    int32 getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer) override;
    int32 applyPreset(int32 bank, int32 number) override
    {
        return pass("applyPreset", &Api::applyPreset, bank, number);
    }
    int32 getVoiceDataString(int32 bank, int32 number, char* buffer) override;
    int32 findParameter(int32 xPos, int32 yPos, uint32& id) override
    {
        return pass("findParameter", &Api::findParameter, xPos, yPos, id);
    }
    void onHostPortsReady(bool state) override
    {
        pass("onHostPortsReady", &Api::onHostPortsReady, state);
    }
    void onInitialStartFileLoad(bool state) override
    {
        pass("onInitialStartFileLoad", &Api::onInitialStartFileLoad, state);
    }
    void syncPartToMidiChannel(int32 channel) override
    {
        pass("syncPartToMidiChannel", &Api::syncPartToMidiChannel, channel);
    }
    std::vector<char> getUserBankData(int32 bank, int32 number) override
    {
        return pass("getUserBankData", &Api::getUserBankData, bank, number);
    }
    int32 applyUserBank(int32 bank, int32 number, const char* data, int32 size) override;
    void setEffectInterface(VstIEffectInterface* effect) override
    {
        pass("setEffectInterface", &Api::setEffectInterface, effect);
    }
    void setControllerInterface(VstIControllerInterface* controller) override
    {
        pass("setControllerInterface", &Api::setControllerInterface, controller);
    }
    int32 getLatencyMode() override { return pass("getLatencyMode", &Api::getLatencyMode); }
    int32 getFirstStartState() override
    {
        return pass("getFirstStartState", &Api::getFirstStartState);
    }
    bool isDisplayAudioPort(const char* displayName) override
    {
        return pass("isDisplayAudioPort", &Api::isDisplayAudioPort, displayName);
    }
    void setEffectOption(bool option) override
    {
        pass("setEffectOption", &Api::setEffectOption, option);
    }
    bool matchRegularExpression(const char* pattern, const char* text) override
    {
        return pass("matchRegularExpression", &Api::matchRegularExpression, pattern, text);
    }
    int32 onFocus(bool state) override { return pass("onFocus", &Api::onFocus, state); }
    bool onKeyDown(char character, int16 keyCode, int16 modifiers) override
    {
        return pass("onKeyDown", &Api::onKeyDown, character, keyCode, modifiers);
    }
    bool onKeyUp(char character, int16 keyCode, int16 modifiers) override
    {
        return pass("onKeyUp", &Api::onKeyUp, character, keyCode, modifiers);
    }
    bool onWheel(float distance) override { return pass("onWheel", &Api::onWheel, distance); }
    int32 setStateText(const char16* text) override
    {
        return pass("setStateText", &Api::setStateText, text);
    }
    void setHostType(int32 hostType) override { pass("setHostType", &Api::setHostType, hostType); }
    int32 getStateFormat() override { return pass("getStateFormat", &Api::getStateFormat); }

private:
    /** @param text the call with its arguments, for the journal
        @param call makes it */
    template <typename Call>
    auto watch(const char* name, const std::string& text, Call&& call)
    {
        const Entered entered(journal, text);
        try {
            return call();
        } catch (const std::exception& error) {
            sayThrown(name, text, ": " + std::string(error.what()));
            throw;
        } catch (...) {
            sayThrown(name, text, "");
            throw;
        }
    }

    template <typename Result, typename... Parameters, typename... Arguments>
    Result pass(const char* name, Result (VstIEditorConnect::*operation)(Parameters...),
                Arguments&&... arguments)
    {
        return watch(name, watchedCallText(name, arguments...),
                     [&] { return (library.*operation)(arguments...); });
    }

    /** Has call fill a buffer with marked bytes behind its end, and copies the text to buffer. */
    template <typename Call>
    int32 fill(const char* name, char* buffer, Call&& call);
    void sayThrown(const char* name, const std::string& call, const std::string& what);
    bool isFirst(const std::string& fault);

    VstIEditorConnect& library;
    Journal& journal;
    std::mutex mutex;
    std::set<std::string> told;
};

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
