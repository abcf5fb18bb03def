// HostInterfaces: all interfaces that a host's objects offer, and bases for those who implement
// them. Nobody calls a reserved slot, but each has to be there.
//
//   class Port final : public ReservedSlots<IHostPort> { ... };    // all but the reserved slots
//   void reserved(int slot) override { complain(slot); }           // who wants to know
#pragma once

#include "hostapi/IBusDescriptor.h"
#include "hostapi/IComponentFactory.h"
#include "hostapi/IComponentPortHandler.h"
#include "hostapi/IConnector.h"
#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"
#include "hostapi/IHostPort.h"
#include "hostapi/IPortRegistry.h"
#include "hostapi/IValue.h"

namespace Steinberg {

/** An interface with one operation behind all of its reserved slots. */
template <class Interface>
class ReservedSlot : public Interface {
protected:
    ~ReservedSlot() = default;

    /** Somebody called this slot. */
    virtual void reserved(int /*slot*/) {}
};

/** An interface without reserved slots. */
template <class Interface>
class ReservedSlots : public ReservedSlot<Interface> {
};

template <>
class ReservedSlots<IBusDescriptor> : public ReservedSlot<IBusDescriptor> {
public:
    void PLUGIN_API reserved4() override { reserved(4); }
    void PLUGIN_API reserved5() override { reserved(5); }
};

template <>
class ReservedSlots<IConnector> : public ReservedSlot<IConnector> {
public:
    void PLUGIN_API reserved3() override { reserved(3); }
};

template <>
class ReservedSlots<IDevice> : public ReservedSlot<IDevice> {
public:
    void PLUGIN_API reserved4() override { reserved(4); }
    void PLUGIN_API reserved5() override { reserved(5); }
    void PLUGIN_API reserved6() override { reserved(6); }
    void PLUGIN_API reserved7() override { reserved(7); }
    void PLUGIN_API reserved9() override { reserved(9); }
};

template <>
class ReservedSlots<IDeviceList> : public ReservedSlot<IDeviceList> {
public:
    void PLUGIN_API reserved3() override { reserved(3); }
    void PLUGIN_API reserved4() override { reserved(4); }
    void PLUGIN_API reserved5() override { reserved(5); }
};

template <>
class ReservedSlots<IHostPort> : public ReservedSlot<IHostPort> {
public:
    void PLUGIN_API reserved8() override { reserved(8); }
    void PLUGIN_API reserved10() override { reserved(10); }
};

template <>
class ReservedSlots<IValue> : public ReservedSlot<IValue> {
public:
    void PLUGIN_API reserved3() override { reserved(3); }
    void PLUGIN_API reserved4() override { reserved(4); }
    void PLUGIN_API reserved6() override { reserved(6); }
    void PLUGIN_API reserved7() override { reserved(7); }
    void PLUGIN_API reserved8() override { reserved(8); }
    void PLUGIN_API reserved9() override { reserved(9); }
    void PLUGIN_API reserved10() override { reserved(10); }
    void PLUGIN_API reserved11() override { reserved(11); }
    void PLUGIN_API reserved12() override { reserved(12); }
    void PLUGIN_API reserved13() override { reserved(13); }
    void PLUGIN_API reserved14() override { reserved(14); }
    void PLUGIN_API reserved15() override { reserved(15); }
    void PLUGIN_API reserved16() override { reserved(16); }
    void PLUGIN_API reserved18() override { reserved(18); }
};

} // namespace Steinberg
