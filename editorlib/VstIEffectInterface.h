// VstIEffectInterface: what the editor library may ask of the processor.
#pragma once

namespace Steinberg {
namespace Vst {

/** Implemented by VstK2x, handed over with VstIEditorConnect::setEffectInterface and taken back by
    passing null. Not reference counted: it lives as long as the processor. */
class VstIEffectInterface {
public:
    /** Hands one MIDI message to the processor for the host's "Midi Out" bus. [any library thread,
        also from inside receiveHostMidi]
        @param data length bytes, borrowed for the call
        @param length only 3 is taken; any other length is ignored */
    virtual void writeMidi(const void* data, int length) = 0;

protected:
    ~VstIEffectInterface() = default;
};

} // namespace Vst
} // namespace Steinberg
