#include "simulator/Instrument.h"

#include "simulator/Voices.h"

#include <algorithm>
#include <utility>

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {

constexpr size_t appliedCapacity = 1000;

// Made-up sounds: a voice always has the same values, and neighbouring voices have different ones.
int32 voiceValue(int32 bank, int32 number, size_t column)
{
    return (bank * 37 + number * 11 + static_cast<int32>(column) * 23 + 5) % 128;
}

} // namespace

Instrument::Instrument()
{
    midi.connect();
}

Instrument::~Instrument()
{
    midi.close();
}

bool Instrument::addObserver(VstIObserver* observer)
{
    auto* own = EditorObserver::find(observer);
    if (!own)
        return false;
    const std::lock_guard<std::mutex> guard(observersMutex);
    if (!own->attach(shared_from_this()))
        return false;
    observers.push_back(own);
    return true;
}

bool Instrument::removeObserver(VstIObserver* observer)
{
    auto* own = EditorObserver::find(observer);
    {
        const std::lock_guard<std::mutex> guard(observersMutex);
        const auto found = std::find(observers.begin(), observers.end(), own);
        if (!own || found == observers.end())
            return false;
        observers.erase(found);
        own->detach(*this);
    }
    midi.waitForReceiver(); // the port's thread may be in a callback of this observer
    return true;
}

void Instrument::letGo()
{
    {
        const std::lock_guard<std::mutex> guard(observersMutex);
        for (auto* observer : observers)
            observer->detach(*this);
        observers.clear();
    }
    midi.close();
    controller.set(nullptr);
}

bool Instrument::addGesture(uint32 id, const Gesture& gesture)
{
    bool accepted = true;
    const std::lock_guard<std::mutex> guard(observersMutex);
    for (auto* observer : observers)
        if (observer->id() == id && !observer->add(gesture))
            accepted = false;
    return accepted;
}

void Instrument::raiseNow(uint32 id, const Gesture& gesture)
{
    std::vector<std::shared_ptr<EditorObserver::State>> watching;
    {
        const std::lock_guard<std::mutex> guard(observersMutex);
        for (auto* observer : observers)
            if (observer->id() == id)
                watching.push_back(observer->shared());
    }
    for (const auto& observer : watching)
        EditorObserver::raise(*observer, gesture);
}

bool Instrument::turnKnob(uint32 id, const std::vector<int32>& newValues)
{
    const size_t index = parameters.find(id);
    if (index == InstrumentParameters::none || newValues.empty())
        return false;
    Gesture gesture;
    for (const int32 value : newValues)
        gesture.values.push_back(parameters.clamped(index, value));
    if (!addGesture(id, gesture))
        return false;
    parameters.setValue(index, gesture.values.back());
    lastKnob = id;
    if (id != InstrumentParameters::editFlag)
        markEdited(&Instrument::raiseLater);
    for (const int32 value : gesture.values)
        midi.sendValue(index, value);
    return true;
}

void Instrument::takeValue(size_t index, int32 value)
{
    if (parameters.value(index) == value)
        return;
    parameters.setValue(index, value);
    raiseNow(parameters.id(index), {{value}, true});
    markEdited(&Instrument::raiseNow);
}

void Instrument::markEdited(Raise raise)
{
    const size_t flag = parameters.find(InstrumentParameters::editFlag);
    if (parameters.value(flag) != 0)
        return;
    parameters.setValue(flag, 1);
    (this->*raise)(InstrumentParameters::editFlag, {{1}, true});
}

void Instrument::automate(uint32 id, double normalized)
{
    ++automationCount;
    const size_t index = parameters.find(id);
    if (index == InstrumentParameters::none)
        return;
    parameters.setValue(index, parameters.fromNormalized(index, normalized));
    hostValues[index].normalized = normalized;
    hostValues[index].waiting = true;
    midi.sendValueFromAudioThread(index);
}

void Instrument::passHostValueOn(uint32 id)
{
    const size_t index = parameters.find(id);
    if (index == InstrumentParameters::none || !hostValues[index].waiting.exchange(false))
        return;
    const double normalized = hostValues[index].normalized;
    int value = 0;
    const bool changed = controller.ask(false, [&](VstIControllerInterface& present) {
        return present.isSetVSTValue(id, normalized, value);
    });
    // The controller's result is taken, unless the value has changed again meanwhile.
    if (changed)
        parameters.replaceValue(index, parameters.fromNormalized(index, normalized), value);
}

bool Instrument::applyVoice(int32 bank, int32 number)
{
    record(appliedVoices, {bank, number, {}});
    const int32 part = shownPart;
    if (!selectVoice(part, bank, number, &Instrument::raiseLater))
        return false;
    midi.sendVoice(part, bank, number);
    midi.sendValues();
    return true;
}

bool Instrument::takeVoice(int32 part, int32 bank, int32 number)
{
    return selectVoice(part, bank, number, &Instrument::raiseNow);
}

bool Instrument::selectVoice(int32 part, int32 bank, int32 number, Raise raise)
{
    if (!voiceExists(bank, number))
        return false;
    {
        const std::lock_guard<std::mutex> guard(voiceMutex);
        voiceBank = bank;
        voiceNumber = number;
    }
    for (size_t column = 0; column < InstrumentParameters::partParameters; ++column) {
        const size_t index = parameters.findInPart(part, column);
        const int32 value = voiceValue(bank, number, column);
        parameters.setValue(index, value);
        (this->*raise)(parameters.id(index), {{value}, true});
    }
    markUnedited();
    return true;
}

bool Instrument::applyUserBank(int32 bank, int32 number, std::vector<char> data)
{
    record(appliedUserBanks, {bank, number, data});
    if (!userBanks.put(bank, number, std::move(data)))
        return false;
    markUnedited();
    return true;
}

void Instrument::record(AppliedList& list, SimulatorControl::Applied applied)
{
    const std::lock_guard<std::mutex> guard(voiceMutex);
    if (list.size() >= appliedCapacity)
        list.pop_front();
    list.push_back(std::move(applied));
}

std::vector<SimulatorControl::Applied> Instrument::voicesApplied() const
{
    const std::lock_guard<std::mutex> guard(voiceMutex);
    return {appliedVoices.begin(), appliedVoices.end()};
}

std::vector<SimulatorControl::Applied> Instrument::userBanksApplied() const
{
    const std::lock_guard<std::mutex> guard(voiceMutex);
    return {appliedUserBanks.begin(), appliedUserBanks.end()};
}

SoundState Instrument::sound() const
{
    SoundState state;
    {
        const std::lock_guard<std::mutex> guard(voiceMutex);
        state.bank = voiceBank;
        state.number = voiceNumber;
    }
    for (size_t index = 0; index < InstrumentParameters::size; ++index)
        if (parameters.id(index) != InstrumentParameters::editFlag)
            state.parameters.emplace_back(parameters.id(index), parameters.value(index));
    state.userBanks = userBanks.loaded();
    return state;
}

void Instrument::restore(const SoundState& state)
{
    {
        const std::lock_guard<std::mutex> guard(voiceMutex);
        voiceBank = state.bank;
        voiceNumber = state.number;
    }
    for (const auto& [id, value] : state.parameters) {
        const size_t index = parameters.find(id);
        if (index == InstrumentParameters::none || id == InstrumentParameters::editFlag)
            continue;
        parameters.setValue(index, value);
        const int32 taken = parameters.clamped(index, value);
        controller.tell([known = id, taken](VstIControllerInterface& present) {
            present.setVSTManageParameter(known, taken);
        });
    }
    for (const auto& [slot, data] : state.userBanks)
        userBanks.put(slot.first, slot.second, data);
    markUnedited();
    // The state holds the last voice, but not the part that plays it.
    const int32 part = partThatPlays(state.bank, state.number);
    if (part >= 0)
        midi.sendVoice(part, state.bank, state.number);
    midi.sendValues();
}

int32 Instrument::partThatPlays(int32 bank, int32 number) const
{
    int32 found = -1;
    if (!voiceExists(bank, number))
        return found;
    size_t most = InstrumentParameters::partParameters / 2;
    for (int32 part = 0; part < InstrumentParameters::parts; ++part) {
        size_t same = 0;
        for (size_t column = 0; column < InstrumentParameters::partParameters; ++column)
            if (parameters.value(parameters.findInPart(part, column)) ==
                voiceValue(bank, number, column))
                ++same;
        if (same > most) {
            most = same;
            found = part;
        }
    }
    return found;
}

void Instrument::markUnedited()
{
    const size_t flag = parameters.find(InstrumentParameters::editFlag);
    if (parameters.value(flag) == 0)
        return;
    parameters.setValue(flag, 0);
    addGesture(InstrumentParameters::editFlag, {{0}, false});
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
