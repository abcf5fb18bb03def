// VstIEffectInterface: what the editor library calls in the processor.
#pragma once

namespace Steinberg {
namespace Vst {

/** Implemented by VstK2x. The library gets it by VstIEditorConnect::setEffectInterface and must not
    use it after that call with null. Not reference counted: it lives as long as the processor. */
class VstIEffectInterface {
public:
    /** Sends one MIDI message to the host's "Midi Out" bus. Never waits. [any library thread, and
        the audio thread from inside receiveHostMidi]
        @param data length bytes, borrowed for the call
        @param length must be 3; messages of any other length are ignored */
    virtual void writeMidi(const void* data, int length) = 0;

protected:
    ~VstIEffectInterface() = default;
};

} // namespace Vst
} // namespace Steinberg
