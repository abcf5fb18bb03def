// ReservedSlots: the interfaces of the editor library for those who implement them, beside those of
// the host.
#pragma once

#include "editorlib/VstIEditorConnect.h"
#include "editorlib/VstIObserver.h"
#include "hostapi/HostInterfaces.h"

namespace Steinberg {

template <>
class ReservedSlots<Vst::VstIObserver> : public ReservedSlot<Vst::VstIObserver> {
public:
    void reserved1() override { reserved(1); }
    void reserved2() override { reserved(2); }
    void reserved3() override { reserved(3); }
    void reserved4() override { reserved(4); }
    void reserved5() override { reserved(5); }
};

template <>
class ReservedSlots<Vst::VstIEditorConnect> : public ReservedSlot<Vst::VstIEditorConnect> {
public:
    void reserved21() override { reserved(21); }
    void reserved34() override { reserved(34); }
};

} // namespace Steinberg
