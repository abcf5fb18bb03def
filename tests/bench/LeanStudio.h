// LeanStudio: the host's mixer and ports, doing as little as one can.
#pragma once

#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "hostapi/IHostPort.h"
#include "hostapi/IPortRegistry.h"
#include "hostapi/IValue.h"
#include "tests/bench/LeanHost.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <string>

namespace bench {

class LeanValue final : public Lean<Steinberg::IValue> {
public:
    void PLUGIN_API reserved3() override {}
    void PLUGIN_API reserved4() override {}
    int32 PLUGIN_API getInteger() override { return integer; }
    void PLUGIN_API reserved6() override {}
    void PLUGIN_API reserved7() override {}
    void PLUGIN_API reserved8() override {}
    void PLUGIN_API reserved9() override {}
    void PLUGIN_API reserved10() override {}
    void PLUGIN_API reserved11() override {}
    void PLUGIN_API reserved12() override {}
    void PLUGIN_API reserved13() override {}
    void PLUGIN_API reserved14() override {}
    void PLUGIN_API reserved15() override {}
    void PLUGIN_API reserved16() override {}
    void PLUGIN_API getString(char16* buffer, int32*) override
    {
        std::copy_n(text.c_str(), text.size() + 1, buffer);
    }
    void PLUGIN_API reserved18() override {}
    void PLUGIN_API setInteger(int32 value, bool) override { integer = value; }

    int32 integer = -1;
    std::u16string text;
};

/** A device with nothing in it; the mixer and the tracks say what they have. */
class LeanDevice : public Lean<Steinberg::IDevice> {
public:
    const char* PLUGIN_API getDeviceType() override { return "Mixer"; }
    void PLUGIN_API reserved4() override {}
    void PLUGIN_API reserved5() override {}
    void PLUGIN_API reserved6() override {}
    void PLUGIN_API reserved7() override {}
    Steinberg::IValue* PLUGIN_API getValue(const char*) override { return nullptr; }
    void PLUGIN_API reserved9() override {}
    int32 PLUGIN_API countChildren() override { return 0; }
    Steinberg::IDevice* PLUGIN_API getChild(int32) override { return nullptr; }

protected:
    ~LeanDevice() = default;
};

class LeanTrack final : public LeanDevice {
public:
    const char* PLUGIN_API getDeviceType() override { return "MidiChannel"; }
    Steinberg::IValue* PLUGIN_API getValue(const char* name) override
    {
        LeanValue& value = name[0] == 'o' ? output : channel;
        value.addRef();
        return &value;
    }

    LeanValue output;
    LeanValue channel;
};

/** Tracks of which the last one plays on channel 5 through this plug-in, the others elsewhere. */
class LeanMixer final : public LeanDevice {
public:
    explicit LeanMixer(size_t count);

    Steinberg::IValue* PLUGIN_API getValue(const char*) override
    {
        selected.addRef();
        return &selected;
    }
    int32 PLUGIN_API countChildren() override { return static_cast<int32>(tracks.size()); }
    Steinberg::IDevice* PLUGIN_API getChild(int32 index) override
    {
        return &tracks[static_cast<size_t>(index)];
    }

    static constexpr unsigned kChannel = 5;
    LeanValue selected;
    std::deque<LeanTrack> tracks;
};

class LeanDevices final : public Lean<Steinberg::IDeviceList> {
public:
    void PLUGIN_API reserved3() override {}
    void PLUGIN_API reserved4() override {}
    void PLUGIN_API reserved5() override {}
    Steinberg::IDevice* PLUGIN_API findDevice(const char*, int32) override { return mixer; }

    Steinberg::IDevice* mixer = nullptr;
};

/** A visible audio input. */
class LeanPort final : public Lean<Steinberg::IHostPort> {
public:
    explicit LeanPort(size_t number);

    bool PLUGIN_API getPortId(Steinberg::StringObject& out) override
    {
        out.setText16(id.c_str());
        return true;
    }
    bool PLUGIN_API isPortType(const char* type) override { return type[0] == 'a'; }
    bool PLUGIN_API hasPortAttribute(const char*) override { return false; }
    bool PLUGIN_API isInputPort() override { return true; }
    const char16* PLUGIN_API getSystemName() override { return name.c_str(); }
    void PLUGIN_API reserved8() override {}
    const char16* PLUGIN_API getDisplayName() override { return name.c_str(); }
    void PLUGIN_API reserved10() override {}
    bool PLUGIN_API isDisplayed() override { return true; }
    void PLUGIN_API setDisplayed(bool) override {}

    std::u16string name;
    std::u16string id;
};

class LeanPorts final : public Lean<Steinberg::IPortRegistry> {
public:
    explicit LeanPorts(size_t count);

    int32 PLUGIN_API getPortCount() override { return static_cast<int32>(ports.size()); }
    Steinberg::IHostPort* PLUGIN_API getPortByIndex(int32 index) override
    {
        return &ports[static_cast<size_t>(index)];
    }
    Steinberg::IHostPort* PLUGIN_API findPortById(const char*) override { return nullptr; }
    int32 PLUGIN_API removeFromAllMidiInputs(Steinberg::IHostPort*) override { return 0; }

    std::deque<LeanPort> ports;
};

} // namespace bench
