#include "tools/check-library/WatchedLibrary.h"

#include "presets/VoiceText.h"
#include "tools/check-library/Remedies.h"

#include <algorithm>
#include <array>
#include <exception>
#include <sstream>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

/** Arguments as the journal shows them; what is behind pointers is left out. */
const char* shown(const void* pointer)
{
    return pointer ? "object" : "null";
}

const char* shown(bool flag)
{
    return flag ? "true" : "false";
}

template <typename Number, typename = std::enable_if_t<std::is_arithmetic_v<Number>>>
Number shown(Number number)
{
    return number;
}

std::string shown(const char* text)
{
    return text ? "\"" + std::string(text) + "\"" : "null";
}

template <typename... Arguments>
std::string callText(const char* operation, const Arguments&... arguments)
{
    std::ostringstream list;
    ((list << ", " << shown(arguments)), ...);
    const auto text = list.str();
    return std::string(operation) + "(" + (text.empty() ? "" : text.substr(2)) + ")";
}

constexpr char kUntouched = 0x5A;

} // namespace

template <typename Call, typename... Arguments>
auto WatchedLibrary::watch(const char* operation, Call&& call, const Arguments&... arguments)
{
    const auto text = callText(operation, arguments...);
    const Entered entered(journal, text);
    try {
        return call();
    } catch (const std::exception& error) {
        sayThrown(operation, text, ": " + std::string(error.what()));
        throw;
    } catch (...) {
        sayThrown(operation, text, "");
        throw;
    }
}

/** Gives the library room with marked bytes behind it, and buffer what was written to the room. */
template <typename Call>
int32 WatchedLibrary::fill(const char* operation, char* buffer, Call&& call)
{
    std::array<char, 4 * LibraryText::kSize> room{};
    std::fill(room.begin() + LibraryText::kSize, room.end(), kUntouched);
    std::copy_n(buffer, LibraryText::kSize, room.begin());
    const int32 result = call(room.data());
    std::copy_n(room.begin(), LibraryText::kSize, buffer);
    const bool untouched = std::all_of(room.begin() + LibraryText::kSize, room.end(),
                                       [](char byte) { return byte == kUntouched; });
    if (!untouched && isFirst(operation + std::string(" writes")))
        journal.say({Verdict::bad,
                     "buffers",
                     operation + std::string(" writes behind the 30 bytes that it is given, which "
                                             "destroys what the plug-in keeps there."),
                     kTellMaker,
                     {}});
    return result;
}

bool WatchedLibrary::isFirst(const std::string& fault)
{
    const std::lock_guard<std::mutex> guard(mutex);
    return told.insert(fault).second;
}

void WatchedLibrary::sayThrown(const char* operation, const std::string& call,
                               const std::string& what)
{
    if (isFirst(operation + std::string(" throws")))
        journal.say({Verdict::bad,
                     "exceptions",
                     call + " throws an exception" + what +
                         ". For the plug-in it is as if it had done nothing.",
                     kTellMaker,
                     {{"call", call}}});
}

void WatchedLibrary::destroy()
{
    watch("destroy", [&] { library.destroy(); });
}

void WatchedLibrary::start()
{
    watch("start", [&] { library.start(); });
}

void WatchedLibrary::attachService()
{
    watch("attachService", [&] { library.attachService(); });
}

void WatchedLibrary::detachService()
{
    watch("detachService", [&] { library.detachService(); });
}

int32 WatchedLibrary::prepareEditor(void* parent, const char* platformType)
{
    return watch(
        "prepareEditor", [&] { return library.prepareEditor(parent, platformType); }, parent,
        platformType);
}

int32 WatchedLibrary::getEditorRect(ViewRect* rect)
{
    return watch("getEditorRect", [&] { return library.getEditorRect(rect); });
}

int32 WatchedLibrary::openEditor(void* parent, const ViewRect* rect)
{
    return watch("openEditor", [&] { return library.openEditor(parent, rect); });
}

int32 WatchedLibrary::closeEditor()
{
    return watch("closeEditor", [&] { return library.closeEditor(); });
}

int32 WatchedLibrary::editorOpened()
{
    return watch("editorOpened", [&] { return library.editorOpened(); });
}

int32 WatchedLibrary::addObserver(VstIObserver* observer)
{
    return watch(
        "addObserver", [&] { return library.addObserver(observer); },
        static_cast<const void*>(observer));
}

int32 WatchedLibrary::removeObserver(VstIObserver* observer)
{
    return watch(
        "removeObserver", [&] { return library.removeObserver(observer); },
        static_cast<const void*>(observer));
}

void WatchedLibrary::parametersReady()
{
    watch("parametersReady", [&] { library.parametersReady(); });
}

int32 WatchedLibrary::getParameterStepCount(uint32 id)
{
    return watch(
        "getParameterStepCount", [&] { return library.getParameterStepCount(id); }, id);
}

void WatchedLibrary::hostParameterChanged(uint32 id, double value)
{
    watch(
        "hostParameterChanged", [&] { library.hostParameterChanged(id, value); }, id, value);
}

int32 WatchedLibrary::getParameterValue(uint32 id)
{
    return watch(
        "getParameterValue", [&] { return library.getParameterValue(id); }, id);
}

int32 WatchedLibrary::getParameterMin(uint32 id)
{
    return watch(
        "getParameterMin", [&] { return library.getParameterMin(id); }, id);
}

int32 WatchedLibrary::getParameterMax(uint32 id)
{
    return watch(
        "getParameterMax", [&] { return library.getParameterMax(id); }, id);
}

int32 WatchedLibrary::getParameterValueString(uint32 id, int32 value, std::string& text)
{
    return watch(
        "getParameterValueString", [&] { return library.getParameterValueString(id, value, text); },
        id, value);
}

void WatchedLibrary::setStateChunk(const void* data, int32 size)
{
    watch(
        "setStateChunk", [&] { library.setStateChunk(data, size); }, data, size);
}

std::vector<char> WatchedLibrary::getStateChunk()
{
    return watch("getStateChunk", [&] { return library.getStateChunk(); });
}

void WatchedLibrary::receiveHostMidi(const uint8* data, int32 length)
{
    watch(
        "receiveHostMidi", [&] { library.receiveHostMidi(data, length); }, length);
}

void WatchedLibrary::reserved21()
{
    watch("reserved21", [&] { library.reserved21(); });
}

int32 WatchedLibrary::getCategoryName(int32 mainCategory, char* buffer)
{
    return watch(
        "getCategoryName",
        [&] {
            return fill("getCategoryName", buffer,
                        [&](char* room) { return library.getCategoryName(mainCategory, room); });
        },
        mainCategory);
}

int32 WatchedLibrary::getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer)
{
    return watch(
        "getSubCategoryName",
        [&] {
            return fill("getSubCategoryName", buffer, [&](char* room) {
                return library.getSubCategoryName(mainCategory, subCategory, room);
            });
        },
        mainCategory, subCategory);
}

int32 WatchedLibrary::applyPreset(int32 bank, int32 number)
{
    return watch(
        "applyPreset", [&] { return library.applyPreset(bank, number); }, bank, number);
}

int32 WatchedLibrary::getVoiceDataString(int32 bank, int32 number, char* buffer)
{
    return watch(
        "getVoiceDataString",
        [&] {
            return fill("getVoiceDataString", buffer,
                        [&](char* room) { return library.getVoiceDataString(bank, number, room); });
        },
        bank, number);
}

int32 WatchedLibrary::findParameter(int32 xPos, int32 yPos, uint32& id)
{
    return watch(
        "findParameter", [&] { return library.findParameter(xPos, yPos, id); }, xPos, yPos);
}

void WatchedLibrary::onHostPortsReady(bool state)
{
    watch(
        "onHostPortsReady", [&] { library.onHostPortsReady(state); }, state);
}

void WatchedLibrary::onInitialStartFileLoad(bool state)
{
    watch(
        "onInitialStartFileLoad", [&] { library.onInitialStartFileLoad(state); }, state);
}

void WatchedLibrary::syncPartToMidiChannel(int32 channel)
{
    watch(
        "syncPartToMidiChannel", [&] { library.syncPartToMidiChannel(channel); }, channel);
}

std::vector<char> WatchedLibrary::getUserBankData(int32 bank, int32 number)
{
    return watch(
        "getUserBankData", [&] { return library.getUserBankData(bank, number); }, bank, number);
}

int32 WatchedLibrary::applyUserBank(int32 bank, int32 number, const char* data, int32 size)
{
    return watch(
        "applyUserBank", [&] { return library.applyUserBank(bank, number, data, size); }, bank,
        number, static_cast<const void*>(data), size);
}

void WatchedLibrary::setEffectInterface(VstIEffectInterface* effect)
{
    watch(
        "setEffectInterface", [&] { library.setEffectInterface(effect); },
        static_cast<const void*>(effect));
}

void WatchedLibrary::setControllerInterface(VstIControllerInterface* controller)
{
    watch(
        "setControllerInterface", [&] { library.setControllerInterface(controller); },
        static_cast<const void*>(controller));
}

void WatchedLibrary::reserved34()
{
    watch("reserved34", [&] { library.reserved34(); });
}

int32 WatchedLibrary::getLatencyMode()
{
    return watch("getLatencyMode", [&] { return library.getLatencyMode(); });
}

int32 WatchedLibrary::getFirstStartState()
{
    return watch("getFirstStartState", [&] { return library.getFirstStartState(); });
}

bool WatchedLibrary::isDisplayAudioPort(const char* displayName)
{
    return watch(
        "isDisplayAudioPort", [&] { return library.isDisplayAudioPort(displayName); }, displayName);
}

void WatchedLibrary::setEffectOption(bool option)
{
    watch(
        "setEffectOption", [&] { library.setEffectOption(option); }, option);
}

bool WatchedLibrary::matchRegularExpression(const char* pattern, const char* text)
{
    return watch(
        "matchRegularExpression", [&] { return library.matchRegularExpression(pattern, text); },
        pattern, text);
}

int32 WatchedLibrary::onFocus(bool state)
{
    return watch(
        "onFocus", [&] { return library.onFocus(state); }, state);
}

bool WatchedLibrary::onKeyDown(char character, int16 keyCode, int16 modifiers)
{
    return watch(
        "onKeyDown", [&] { return library.onKeyDown(character, keyCode, modifiers); },
        static_cast<int>(character), keyCode, modifiers);
}

bool WatchedLibrary::onKeyUp(char character, int16 keyCode, int16 modifiers)
{
    return watch(
        "onKeyUp", [&] { return library.onKeyUp(character, keyCode, modifiers); },
        static_cast<int>(character), keyCode, modifiers);
}

bool WatchedLibrary::onWheel(float distance)
{
    return watch(
        "onWheel", [&] { return library.onWheel(distance); }, distance);
}

int32 WatchedLibrary::setStateText(const char16* text)
{
    return watch(
        "setStateText", [&] { return library.setStateText(text); }, static_cast<const void*>(text));
}

void WatchedLibrary::setHostType(int32 hostType)
{
    watch(
        "setHostType", [&] { library.setHostType(hostType); }, hostType);
}

int32 WatchedLibrary::getStateFormat()
{
    return watch("getStateFormat", [&] { return library.getStateFormat(); });
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
