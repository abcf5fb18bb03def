#include "simulator/SimulatedLibrary.h"

#include "pluginterfaces/base/keycodes.h"
#include "simulator/Voices.h"

#include <cmath>
#include <cstring>
#include <regex.h>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr int32 done = 0;
constexpr int32 notDone = 1;

constexpr size_t longestPattern = 256;

int32 result(bool success)
{
    return success ? done : notDone;
}

std::string text(bool state)
{
    return state ? "true" : "false";
}

std::string text(int32 first, int32 second)
{
    return std::to_string(first) + ", " + std::to_string(second);
}

std::string presence(const void* pointer)
{
    return pointer ? "set" : "null";
}

} // namespace

SimulatedLibrary::SimulatedLibrary(std::shared_ptr<Instrument> newInstrument,
                                   std::function<void()> newEnd)
: instrument(std::move(newInstrument))
, end(std::move(newEnd))
{
}

void SimulatedLibrary::destroy()
{
    const auto last = end; // a copy, since the call deletes this object
    instrument->letGo();
    last();
}

void SimulatedLibrary::start()
{
    instrument->log.add("start()");
}

void SimulatedLibrary::attachService()
{
    instrument->log.add("attachService()");
}

void SimulatedLibrary::detachService()
{
    instrument->log.add("detachService()");
}

int32 SimulatedLibrary::prepareEditor(void* parent, const char* platformType)
{
    instrument->log.add(std::string("prepareEditor(") + (platformType ? platformType : "null") +
                        ")");
    return result(parent != nullptr && platformType != nullptr);
}

int32 SimulatedLibrary::getEditorRect(ViewRect* rect)
{
    if (!rect)
        return notDone;
    *rect = ViewRect(0, 0, width, height);
    return done;
}

int32 SimulatedLibrary::openEditor(void* parent, const ViewRect* rect)
{
    instrument->log.add("openEditor()");
    open = parent && rect;
    return result(open);
}

int32 SimulatedLibrary::closeEditor()
{
    instrument->log.add("closeEditor()");
    return result(open.exchange(false));
}

int32 SimulatedLibrary::editorOpened()
{
    instrument->log.add("editorOpened()");
    return result(open);
}

int32 SimulatedLibrary::addObserver(VstIObserver* observer)
{
    return result(instrument->addObserver(observer));
}

int32 SimulatedLibrary::removeObserver(VstIObserver* observer)
{
    return result(instrument->removeObserver(observer));
}

void SimulatedLibrary::parametersReady()
{
    instrument->log.add("parametersReady()");
}

int32 SimulatedLibrary::getParameterStepCount(uint32 id)
{
    const auto& parameters = instrument->parameters;
    const size_t index = parameters.find(id);
    return index != InstrumentParameters::none ? parameters.stepCount(index) : 0;
}

void SimulatedLibrary::hostParameterChanged(uint32 id, double value)
{
    instrument->automate(id, value);
}

int32 SimulatedLibrary::getParameterValue(uint32 id)
{
    const auto& parameters = instrument->parameters;
    const size_t index = parameters.find(id);
    return index != InstrumentParameters::none ? parameters.value(index) : 0;
}

int32 SimulatedLibrary::getParameterMin(uint32 id)
{
    const auto& parameters = instrument->parameters;
    const size_t index = parameters.find(id);
    return index != InstrumentParameters::none ? parameters.minimum(index) : 0;
}

int32 SimulatedLibrary::getParameterMax(uint32 id)
{
    const auto& parameters = instrument->parameters;
    const size_t index = parameters.find(id);
    return index != InstrumentParameters::none ? parameters.maximum(index) : 0;
}

int32 SimulatedLibrary::getParameterValueString(uint32 id, int32 value, std::string& valueText)
{
    const auto& parameters = instrument->parameters;
    const size_t index = parameters.find(id);
    if (index != InstrumentParameters::none)
        return result(parameters.valueText(index, value, valueText));
    valueText.clear();
    return notDone;
}

void SimulatedLibrary::setStateChunk(const void* data, int32 size)
{
    SoundState state;
    const bool valid = SoundState::fromBytes(data, size, state);
    instrument->log.add("setStateChunk(" + std::to_string(size) + ")" + (valid ? "" : " refused"));
    if (valid)
        instrument->restore(state);
}

std::vector<char> SimulatedLibrary::getStateChunk()
{
    instrument->log.add("getStateChunk()");
    instrument->markUnedited();
    return instrument->sound().toBytes();
}

void SimulatedLibrary::receiveHostMidi(const uint8* data, int32 length)
{
    instrument->midi.receiveFromHost(data, length);
}

int32 SimulatedLibrary::getCategoryName(int32 mainCategory, char* buffer)
{
    return result(writeCategoryName(mainCategory, buffer));
}

int32 SimulatedLibrary::getSubCategoryName(int32 mainCategory, int32 subCategory, char* buffer)
{
    return result(writeSubCategoryName(mainCategory, subCategory, buffer));
}

int32 SimulatedLibrary::applyPreset(int32 bank, int32 number)
{
    instrument->log.add("applyPreset(" + text(bank, number) + ")");
    return result(instrument->applyVoice(bank, number));
}

int32 SimulatedLibrary::getVoiceDataString(int32 bank, int32 number, char* buffer)
{
    return result(writeVoiceData(bank, number, buffer));
}

// The editor has a row for each part and a column for each parameter.
int32 SimulatedLibrary::findParameter(int32 xPos, int32 yPos, uint32& id)
{
    if (xPos < 0 || xPos >= width || yPos < 0 || yPos >= height)
        return notDone;
    const auto columns = static_cast<int32>(InstrumentParameters::partParameters);
    const int32 part = yPos * InstrumentParameters::parts / height;
    const auto& parameters = instrument->parameters;
    id = parameters.id(parameters.findInPart(part, static_cast<size_t>(xPos * columns / width)));
    return done;
}

void SimulatedLibrary::onHostPortsReady(bool state)
{
    instrument->log.add("onHostPortsReady(" + text(state) + ")");
}

void SimulatedLibrary::onInitialStartFileLoad(bool state)
{
    instrument->log.add("onInitialStartFileLoad(" + text(state) + ")");
}

void SimulatedLibrary::syncPartToMidiChannel(int32 channel)
{
    instrument->log.add("syncPartToMidiChannel(" + std::to_string(channel) + ")");
    instrument->lastChannelTold = channel;
    ++instrument->channelsTold;
    if (channel >= 0 && channel < InstrumentParameters::parts)
        instrument->shownPart = channel;
}

std::vector<char> SimulatedLibrary::getUserBankData(int32 bank, int32 number)
{
    return instrument->userBanks.get(bank, number);
}

int32 SimulatedLibrary::applyUserBank(int32 bank, int32 number, const char* data, int32 size)
{
    instrument->log.add("applyUserBank(" + text(bank, number) + ", " + std::to_string(size) + ")");
    std::vector<char> bytes;
    if (data && size > 0)
        bytes.assign(data, data + size);
    return result(instrument->applyUserBank(bank, number, std::move(bytes)));
}

void SimulatedLibrary::setEffectInterface(VstIEffectInterface* effect)
{
    instrument->log.add("setEffectInterface(" + presence(effect) + ")");
    instrument->midi.setEffect(effect);
}

void SimulatedLibrary::setControllerInterface(VstIControllerInterface* controller)
{
    instrument->log.add("setControllerInterface(" + presence(controller) + ")");
    instrument->controller.set(controller);
}

// True for the ports with the instrument's sound.
bool SimulatedLibrary::isDisplayAudioPort(const char* displayName)
{
    return displayName && std::strncmp(displayName, "Tavrin RDL3/RDL5", 16) == 0;
}

void SimulatedLibrary::setEffectOption(bool option)
{
    instrument->log.add("setEffectOption(" + text(option) + ")");
}

// By the C library: its time depends on the length of the text only, and it throws nothing.
bool SimulatedLibrary::matchRegularExpression(const char* pattern, const char* candidate)
{
    if (!pattern || !candidate || std::strlen(pattern) > longestPattern)
        return false;
    regex_t expression;
    if (regcomp(&expression, pattern, REG_EXTENDED | REG_NOSUB) != 0)
        return false;
    const bool matches = regexec(&expression, candidate, 0, nullptr, 0) == 0;
    regfree(&expression);
    return matches;
}

int32 SimulatedLibrary::onFocus(bool state)
{
    instrument->log.add("onFocus(" + text(state) + ")");
    return done;
}

// The arrow keys step through the parts; all other keys are left to the host.
bool SimulatedLibrary::onKeyDown(char, int16 keyCode, int16)
{
    const int32 part = instrument->shownPart;
    if (!open || (keyCode != KEY_UP && keyCode != KEY_DOWN))
        return false;
    const int32 next = keyCode == KEY_UP ? part - 1 : part + 1;
    if (next >= 0 && next < InstrumentParameters::parts)
        instrument->shownPart = next;
    return true;
}

bool SimulatedLibrary::onKeyUp(char, int16 keyCode, int16)
{
    return open && (keyCode == KEY_UP || keyCode == KEY_DOWN);
}

// Turns the knob that the user touched last.
bool SimulatedLibrary::onWheel(float distance)
{
    const uint32 knob = instrument->lastKnob;
    if (!open || knob == 0 || !(std::fabs(distance) <= 127.f)) // true for NaN as well
        return false;
    return instrument->turnKnob(
        knob, {getParameterValue(knob) + static_cast<int32>(std::lround(distance))});
}

int32 SimulatedLibrary::setStateText(const char16* stateText)
{
    SoundState state;
    const bool valid = SoundState::fromText(stateText, state);
    instrument->log.add(std::string("setStateText()") + (valid ? "" : " refused"));
    if (valid)
        instrument->restore(state);
    return result(valid);
}

void SimulatedLibrary::setHostType(int32 hostType)
{
    instrument->log.add("setHostType(" + std::to_string(hostType) + ")");
    host = hostType;
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
