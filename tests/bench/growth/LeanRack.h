// LeanRack: the mixer and the instrument rack of a newer host, doing as little as one can.
#pragma once

#include "hostapi/IConnector.h"
#include "tests/bench/LeanStudio.h"

namespace bench::growth {

/** The first output of an instrument; feeds one track. */
class LeanOutput final : public LeanDevice, public Steinberg::IConnector {
public:
    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override
    {
        if (!Steinberg::FUnknownPrivate::iidEqual(wanted, Steinberg::IConnector::iid))
            return LeanDevice::queryInterface(wanted, obj);
        *obj = static_cast<Steinberg::IConnector*>(this);
        return Steinberg::kResultOk;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }
    void PLUGIN_API reserved3() override {}
    bool PLUGIN_API isConnectedTo(Steinberg::IDevice* device) override { return device == fed; }

    Steinberg::IDevice* fed = nullptr;
};

class LeanInstrument final : public LeanDevice {
public:
    int32 PLUGIN_API countChildren() override { return 1; }
    Steinberg::IDevice* PLUGIN_API getChild(int32) override
    {
        return static_cast<LeanDevice*>(&output);
    }
    Steinberg::IValue* PLUGIN_API getValue(const char*) override
    {
        effectType.addRef();
        return &effectType;
    }

    LeanOutput output;
    LeanValue effectType;
};

class LeanRack final : public LeanDevice {
public:
    const char* PLUGIN_API getDeviceType() override { return "VST Project Instruments"; }
    int32 PLUGIN_API countChildren() override { return static_cast<int32>(instruments.size()); }
    Steinberg::IDevice* PLUGIN_API getChild(int32 index) override
    {
        return &instruments[static_cast<size_t>(index)];
    }

    std::deque<LeanInstrument> instruments;
};

/** "VST Mixer", with the rack in it. */
class LeanVstMixer final : public LeanDevice {
public:
    int32 PLUGIN_API countChildren() override { return 1; }
    Steinberg::IDevice* PLUGIN_API getChild(int32) override { return &rack; }

    LeanRack rack;
};

class LeanInstrumentDevices final : public Lean<Steinberg::IDeviceList> {
public:
    void PLUGIN_API reserved3() override {}
    void PLUGIN_API reserved4() override {}
    void PLUGIN_API reserved5() override {}
    Steinberg::IDevice* PLUGIN_API findDevice(const char* name, int32) override
    {
        if (std::strcmp(name, "Mixer") == 0)
            return &mixer;
        return &vstMixer;
    }

    /** As many instruments as tracks, of which each feeds one. This plug-in is the last of them,
        and its track is the last, on LeanMixer's channel. */
    explicit LeanInstrumentDevices(size_t count)
    : mixer(count)
    {
        for (size_t number = 0; number < count; ++number) {
            LeanInstrument& instrument = vstMixer.rack.instruments.emplace_back();
            instrument.output.fed = &mixer.tracks[number];
            instrument.effectType.text = u"Microphone Synthesizer";
        }
        vstMixer.rack.instruments.back().effectType.text = u"RDL3/RDL5 VST";
    }

    LeanMixer mixer;
    LeanVstMixer vstMixer;
};

} // namespace bench::growth
