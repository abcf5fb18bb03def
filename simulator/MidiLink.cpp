#include "simulator/MidiLink.h"

#include "basics/CallGuard.h"
#include "simulator/Instrument.h"
#include "simulator/MidiMapping.h"
#include "simulator/PortModule.h"

namespace Steinberg {
namespace Vst {
namespace simulator {

namespace {
using Clock = std::chrono::steady_clock;
constexpr int32 valuesOfAByte = 128;
} // namespace

MidiLink::MidiLink(Instrument& owner)
: instrument(owner)
{
    for (auto& value : known)
        value = unknown;
}

void MidiLink::connect()
{
    wire = connectWire(*this);
}

void MidiLink::setEffect(VstIEffectInterface* newEffect)
{
    effect.store(newEffect);
    wire->waitForReceiver();
}

void MidiLink::close()
{
    setEffect(nullptr);
    wire->close();
}

void MidiLink::receiveFromHost(const uint8* data, int32 length)
{
    if (const auto note = notes.count(data, length))
        wire->sendFromAudioThread(*note);
}

bool MidiLink::isNews(size_t index, int32 value)
{
    const size_t column = instrument.parameters.column(index);
    return InstrumentParameters::controllerOf(column) != InstrumentParameters::noController &&
           known[index].exchange(value) != value;
}

void MidiLink::sendValueFromAudioThread(size_t index)
{
    const auto& parameters = instrument.parameters;
    const int32 value = parameters.value(index);
    if (echoes[index].contains(value, Clock::now()) || !isNews(index, value))
        return;
    if (!wire->sendFromAudioThread(
            MidiMapping::value(parameters.part(index), parameters.column(index), value)))
        known[index] = unknown;
}

void MidiLink::sendValue(size_t index, int32 value)
{
    const auto& parameters = instrument.parameters;
    echoes[index].add(value, Clock::now());
    if (isNews(index, value) &&
        !wire->send(MidiMapping::value(parameters.part(index), parameters.column(index), value)))
        known[index] = unknown;
}

void MidiLink::sendValues()
{
    for (size_t index = 0; index < InstrumentParameters::size; ++index)
        sendValue(index, instrument.parameters.value(index));
}

void MidiLink::sendVoice(int32 part, int32 bank, int32 number)
{
    parts[static_cast<size_t>(part)].voice = bank * valuesOfAByte + number;
    for (const auto& message : MidiMapping::voice(part, bank, number))
        wire->send(message);
}

void MidiLink::sendProgram(int32 part, int32 number)
{
    wire->send(MidiMessage::programChange(part, number));
}

void MidiLink::sendSound()
{
    for (int32 part = 0; part < InstrumentParameters::parts; ++part) {
        const int32 voice = parts[static_cast<size_t>(part)].voice;
        if (voice != unknown)
            sendVoice(part, voice / valuesOfAByte, voice % valuesOfAByte);
    }
    sendValues();
}

void MidiLink::instrumentIsBack()
{
    for (auto& value : known)
        value = unknown;
    sendSound();
}

void MidiLink::arrived(const MidiMessage& message)
{
    if (message.isNote()) {
        if (auto* present = effect.load())
            guarded([&] { present->writeMidi(message.bytes.data(), message.size); });
    } else if (message.kind() == MidiMessage::controller) {
        takeController(message);
    } else {
        takeProgram(message);
    }
}

void MidiLink::takeController(const MidiMessage& message)
{
    const int32 channel = message.channel();
    const uint8 controller = message.bytes[1];
    const int32 value = message.bytes[2];
    if (controller == MidiMapping::bankSelectFine) {
        parts[static_cast<size_t>(channel)].bank = value;
        return;
    }
    const int32 column = MidiMapping::columnOf(controller);
    if (column == MidiMapping::none)
        return;
    const size_t index = instrument.parameters.findInPart(channel, static_cast<size_t>(column));
    known[index] = value;
    echoes[index].add(value, Clock::now());
    instrument.takeValue(index, value);
}

void MidiLink::takeProgram(const MidiMessage& message)
{
    auto& part = parts[static_cast<size_t>(message.channel())];
    const int32 number = message.bytes[1];
    if (!instrument.takeVoice(message.channel(), part.bank, number))
        return;
    part.voice = part.bank * valuesOfAByte + number;
    for (size_t column = 0; column < InstrumentParameters::partParameters; ++column) {
        const size_t index = instrument.parameters.findInPart(message.channel(), column);
        known[index] = instrument.parameters.value(index);
    }
}

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
