// MidiLink: connects the simulated instrument's wire with the host's notes and with the parameters.
#pragma once

#include "editorlib/VstIEffectInterface.h"
#include "simulator/EchoMemory.h"
#include "simulator/HostNotes.h"
#include "simulator/InstrumentParameters.h"
#include "simulator/MidiWire.h"

#include <atomic>
#include <memory>

namespace Steinberg {
namespace Vst {
namespace simulator {

class Instrument;

/** Sends the host's notes, parameter values and voices to the wire. Gives arriving notes to the
    processor, and arriving controllers and program changes to the instrument. A value is sent only
    if the other end does not have it, and never back to where it came from. */
class MidiLink final : public MidiReceiver {
public:
    /** @param owner must outlive this object */
    explicit MidiLink(Instrument& owner);
    MidiLink(const MidiLink&) = delete;
    MidiLink& operator=(const MidiLink&) = delete;

    /** Makes the wire. To be called once, before all others. From then on a port's thread calls
        the owner. */
    void connect();

    /** Sets the processor. After this a port does not call the former one any more. [any thread but
        the audio thread] */
    void setEffect(VstIEffectInterface* newEffect);
    /** Waits for a call that is under way on the port's thread. [any thread but the
        audio thread] */
    void waitForReceiver() { wire->waitForReceiver(); }
    /** Ends all sending and receiving. [any thread but the audio thread] */
    void close();

    /** Counts the message, and sends it if it is a note. [audio thread] */
    void receiveFromHost(const uint8* data, int32 length);
    /** Sends a parameter's current value, which the host has set, unless it is an echo.
        [audio thread] */
    void sendValueFromAudioThread(size_t index);

    // [any thread but the audio thread]
    void sendValue(size_t index, int32 value);
    void sendVoice(int32 part, int32 bank, int32 number);
    /** @param part 0 to 15 @param number 0 to 127 */
    void sendProgram(int32 part, int32 number);
    /** Sends the value of each parameter that the other end does not have. */
    void sendValues();
    void choosePort(const std::string& which) { wire->choosePort(which); }

    SimulatorControl::MidiPort port() const { return wire->port(); }
    const HostNotes& hostNotes() const { return notes; }

    void arrived(const MidiMessage& message) override;
    void instrumentIsBack() override;

private:
    static constexpr int32 unknown = -1;

    /** Remembers the value as known. @return whether the other end did not have it */
    bool isNews(size_t index, int32 value);
    void sendSound();
    void takeController(const MidiMessage& message);
    void takeProgram(const MidiMessage& message);

    struct Part {
        std::atomic<int32> voice{unknown}; ///< bank * 128 + number, of the one selected last
        int32 bank = 0; ///< the last bank select that arrived; used by the wire's thread only
    };

    Instrument& instrument;
    HostNotes notes;
    std::atomic<VstIEffectInterface*> effect{nullptr};
    /** The values that the other end has. */
    std::array<std::atomic<int32>, InstrumentParameters::size> known;
    std::array<EchoMemory, InstrumentParameters::size> echoes;
    std::array<Part, InstrumentParameters::parts> parts;
    std::unique_ptr<MidiWire> wire;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
