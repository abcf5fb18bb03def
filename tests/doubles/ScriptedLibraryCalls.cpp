// The operations of VstIEditorConnect: record the call, then give the answer that the test set.
#include "tests/doubles/NonsenseText.h"
#include "tests/doubles/ScriptedLibrary.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <regex>

namespace doubles {

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

constexpr size_t kBufferSize = 30;
constexpr int kMostValues = 3000; ///< of a parameter, each of which has a text to ask for

// A rectangle whose right side is as far left of its left side as it can be.
constexpr int32 kFarLeft = std::numeric_limits<int32>::min();
constexpr int32 kFarRight = std::numeric_limits<int32>::max();

int32 fill(CallScript& script, char* buffer, const BufferAnswer& answer)
{
    if (!answer.text || script.toldWithoutObject())
        return answer.result;
    const auto text = told(script, *answer.text);
    const auto length = std::min(text.size(), kBufferSize);
    std::memcpy(buffer, text.data(), length);
    if (length < kBufferSize)
        buffer[length] = 0;
    return answer.result;
}

std::string sizeText(int32 size)
{
    return std::to_string(size) + " bytes";
}

std::vector<char> copied(const void* data, int32 size, int32 most)
{
    const auto* bytes = static_cast<const char*>(data);
    return data && size > 0 ? std::vector<char>(bytes, bytes + std::min(size, most))
                            : std::vector<char>();
}

std::vector<char> bytesTold(CallScript& script, const std::vector<char>& own)
{
    const auto nonsense = script.toldText();
    if (!nonsense)
        return own;
    const auto bytes = nonsenseBytes(*nonsense);
    return {bytes.begin(), bytes.end()};
}

std::string rectText(const ViewRect* rect)
{
    if (!rect)
        return "null";
    return argumentText(rect->left) + " " + argumentText(rect->top) + " " +
           argumentText(rect->right) + " " + argumentText(rect->bottom);
}

} // namespace

void ScriptedLibrary::destroy()
{
    call("destroy");
    destroyed = true;
}

int32 ScriptedLibrary::prepareEditor(void* newParent, const char* platformType)
{
    if (!call("prepareEditor", newParent, platformType))
        return 1;
    parent = newParent;
    return told(prepareResult);
}

int32 ScriptedLibrary::getEditorRect(ViewRect* out)
{
    if (!call("getEditorRect"))
        return 1;
    if (rect && out)
        *out = *rect;
    if (out && toldWithoutObject())
        *out = ViewRect(kFarRight, kFarRight, kFarLeft, kFarLeft);
    return rectResult;
}

int32 ScriptedLibrary::openEditor(void* newParent, const ViewRect* newRect)
{
    if (!call("openEditor", newParent, rectText(newRect)))
        return 1;
    parent = newParent;
    return openResult;
}

int32 ScriptedLibrary::getParameterStepCount(uint32 id)
{
    return call("getParameterStepCount", id) ? told(getParameter(id).stepCount) : 0;
}

void ScriptedLibrary::hostParameterChanged(uint32 id, double value)
{
    if (!isQuiet())
        call("hostParameterChanged", id, value);
}

int32 ScriptedLibrary::getParameterValue(uint32 id)
{
    return call("getParameterValue", id) ? told(getParameter(id).value) : 0;
}

int32 ScriptedLibrary::getParameterMin(uint32 id)
{
    return call("getParameterMin", id) ? told(getParameter(id).minimum, kMostValues) : 0;
}

int32 ScriptedLibrary::getParameterMax(uint32 id)
{
    return call("getParameterMax", id) ? told(getParameter(id).maximum, kMostValues) : 0;
}

int32 ScriptedLibrary::getParameterValueString(uint32 id, int32 value, std::string& text)
{
    if (!call("getParameterValueString", id, value))
        return 1;
    if (valueText) {
        text = valueText(id, value);
        return 0;
    }
    const auto parameter = getParameter(id);
    const auto found = parameter.texts.find(value);
    text = doubles::told(*this,
                         found == parameter.texts.end() ? std::to_string(value) : found->second);
    return 0;
}

void ScriptedLibrary::setStateChunk(const void* data, int32 size)
{
    if (call("setStateChunk", sizeText(size)))
        statesSet.push_back(copied(data, size, mostKept));
}

std::vector<char> ScriptedLibrary::getStateChunk()
{
    return call("getStateChunk") ? bytesTold(*this, state) : std::vector<char>();
}

void ScriptedLibrary::receiveHostMidi(const uint8* data, int32 length)
{
    if (!isQuiet())
        call("receiveHostMidi", bytesText(data, length > 0 ? static_cast<size_t>(length) : 0));
}

void ScriptedLibrary::reserved(int slot)
{
    complain("library: slot " + std::to_string(slot) + " is reserved");
}

int32 ScriptedLibrary::getCategoryName(int32 mainCategory, char* buffer)
{
    if (!call("getCategoryName", mainCategory) || !categoryName)
        return 1;
    return fill(*this, buffer, categoryName(mainCategory));
}

int32 ScriptedLibrary::getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer)
{
    if (!call("getSubCategoryName", mainCategory, subCategory) || !subCategoryName)
        return 1;
    return fill(*this, buffer, subCategoryName(mainCategory, subCategory));
}

int32 ScriptedLibrary::applyPreset(int32 bank, int32 number)
{
    return call("applyPreset", bank, number) ? told(0) : 1;
}

int32 ScriptedLibrary::getVoiceDataString(int32 bank, int32 number, char* buffer)
{
    if (!call("getVoiceDataString", bank, number) || !voiceData)
        return 1;
    return fill(*this, buffer, voiceData(bank, number));
}

int32 ScriptedLibrary::findParameter(int32 xPos, int32 yPos, uint32& id)
{
    if (!call("findParameter", xPos, yPos) || !parameterAt)
        return 1;
    const auto found = parameterAt(xPos, yPos);
    if (toldWithoutObject())
        return 0;
    id = found.value_or(id);
    return found ? 0 : 1;
}

std::vector<char> ScriptedLibrary::getUserBankData(int32 bank, int32 number)
{
    return call("getUserBankData", bank, number) && userBank
               ? bytesTold(*this, userBank(bank, number))
               : std::vector<char>();
}

int32 ScriptedLibrary::applyUserBank(int32 bank, int32 number, const char* data, int32 size)
{
    if (!call("applyUserBank", bank, number, sizeText(size)))
        return 1;
    userBanksApplied.push_back(copied(data, size, mostKept));
    return 0;
}

void ScriptedLibrary::setEffectInterface(VstIEffectInterface* newEffect)
{
    effect = newEffect;
    call("setEffectInterface", newEffect);
}

void ScriptedLibrary::setControllerInterface(VstIControllerInterface* newController)
{
    controller = newController;
    call("setControllerInterface", newController);
}

int32 ScriptedLibrary::getFirstStartState()
{
    return call("getFirstStartState") ? told(firstStartState) : 0;
}

bool ScriptedLibrary::isDisplayAudioPort(const char* displayName)
{
    return call("isDisplayAudioPort", displayName) && displayName &&
           toldFlag(displaysPort && displaysPort(displayName));
}

bool ScriptedLibrary::matchRegularExpression(const char* pattern, const char* text)
{
    if (!call("matchRegularExpression", pattern, text) || !pattern || !text)
        return false;
    return toldFlag(matches ? matches(pattern, text)
                            : std::regex_search(text, std::regex(pattern, std::regex::extended)));
}

bool ScriptedLibrary::onKeyDown(char character, int16 keyCode, int16 modifiers)
{
    return call("onKeyDown", static_cast<int>(character), keyCode, modifiers) &&
           toldFlag(handlesKeys);
}

bool ScriptedLibrary::onKeyUp(char character, int16 keyCode, int16 modifiers)
{
    return call("onKeyUp", static_cast<int>(character), keyCode, modifiers) &&
           toldFlag(handlesKeys);
}

bool ScriptedLibrary::onWheel(float distance)
{
    return call("onWheel", distance) && toldFlag(handlesWheel);
}

int32 ScriptedLibrary::setStateText(const char16* text)
{
    const std::u16string units = text ? text : u"";
    if (!call("setStateText", std::to_string(units.size()) + " units"))
        return 1;
    stateTextsSet.push_back(units);
    return told(stateTextResult);
}

} // namespace doubles
