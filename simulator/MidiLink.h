// MidiLink: the simulated instrument's MIDI, between host, parameters and wire.
#pragma once

#include "editorlib/VstIEffectInterface.h"
#include "simulator/EchoMemory.h"
#include "simulator/HostNotes.h"
#include "simulator/MidiWire.h"
#include "simulator/ParameterModel.h"

#include <atomic>
#include <memory>

namespace Steinberg {
namespace Vst {
namespace simulator {

class Instrument;

/** Notes of the host, values and voices go out; what arrives goes to the processor (notes) and to
   the instrument (controllers and program changes). A value leaves once: not again while the other
   end has it, and not back to where it came from. */
class MidiLink final : public MidiReceiver {
public:
    /** @param owner outlives this object */
    explicit MidiLink(Instrument& owner);
    MidiLink(const MidiLink&) = delete;
    MidiLink& operator=(const MidiLink&) = delete;

    /** Makes the wire, once and before anything else. From then on a port's thread calls the owner.
     */
    void connect();

    /** Afterwards the former one is not called any more by a port. [any thread but the audio
     * thread]
     */
    void setEffect(VstIEffectInterface* newEffect);
    /** Waits for a call under way on the port's thread. [any thread but the audio thread] */
    void waitForReceiver() { wire->waitForReceiver(); }
    /** The end of all sending and receiving. [any thread but the audio thread] */
    void close();

    /** Anything but a note is counted and dropped. [audio thread] */
    void receiveFromHost(const uint8* data, int32 length);
    /** Sends a parameter's present value, which the host set, unless it is an echo. [audio thread]
     */
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

    /** @return whether the value is news for the other end, which has it from now on */
    bool isNews(size_t index, int32 value);
    void sendSound();
    void takeController(const MidiMessage& message);
    void takeProgram(const MidiMessage& message);

    struct Part {
        std::atomic<int32> voice{unknown}; ///< bank * 128 + number, of the one selected last
        int32 bank = 0;                    ///< that the other end selected; its thread's alone
    };

    Instrument& instrument;
    HostNotes notes;
    std::atomic<VstIEffectInterface*> effect{nullptr};
    std::array<std::atomic<int32>, ParameterModel::size> known; ///< values that the other end has
    std::array<EchoMemory, ParameterModel::size> echoes;
    std::array<Part, ParameterModel::parts> parts;
    std::unique_ptr<MidiWire> wire;
};

} // namespace simulator
} // namespace Vst
} // namespace Steinberg
