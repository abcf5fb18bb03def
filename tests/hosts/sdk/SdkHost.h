// SdkHost: the built bundle in the SDK's own hosting classes, which the validator uses too: its
// host application, its connection between the two components, its event and parameter lists.
#pragma once

#include "simulator/SimulatorControl.h"

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "public.sdk/source/vst/hosting/eventlist.h"
#include "public.sdk/source/vst/hosting/hostclasses.h"
#include "public.sdk/source/vst/hosting/module.h"
#include "public.sdk/source/vst/hosting/plugprovider.h"

#include <vector>

namespace hosts {

extern const std::string kSdkHost; ///< its name in the table

/** The loaded bundle and the context of its instances. Declare it before them. */
class SdkHost {
public:
    SdkHost();
    ~SdkHost();
    SdkHost(const SdkHost&) = delete;
    SdkHost& operator=(const SdkHost&) = delete;

    /** The processor's class, with which a PlugProvider makes an instance. */
    VST3::Hosting::ClassInfo processorClass() const;
    const VST3::Hosting::PluginFactory& factory() const { return module->getFactory(); }

private:
    Steinberg::Vst::HostApplication application;
    VST3::Hosting::Module::Ptr module;
};

/** An initialised and connected instance, and the simulated instrument behind it. All calls but
    process are [host main thread]. */
class SdkInstance {
public:
    static constexpr Steinberg::int32 blockSize = 64;
    static constexpr double sampleRate = 48000;

    explicit SdkInstance(const SdkHost& host);
    SdkInstance(const SdkInstance&) = delete;
    SdkInstance& operator=(const SdkInstance&) = delete;

    /** False when the plug-in did not load, or found no simulator. */
    explicit operator bool() const { return component && controller && processor && simulator; }

    Steinberg::IPtr<Steinberg::Vst::IComponent> component;
    Steinberg::IPtr<Steinberg::Vst::IEditController> controller;
    Steinberg::IPtr<Steinberg::Vst::IAudioProcessor> processor;
    Steinberg::Vst::SimulatorControl* simulator = nullptr;

    /** Sets processing up and starts it. */
    void start() const;
    void stop() const;

    /** One block. [one thread at a time]
        @param input may be null
        @return what came out of "Midi Out" */
    std::vector<Steinberg::Vst::Event> process(Steinberg::Vst::IEventList* input) const;

    /** The component's state. */
    std::vector<char> save() const;
    /** @return what the component answered */
    Steinberg::tresult restore(const std::vector<char>& bytes) const;

private:
    Steinberg::IPtr<Steinberg::Vst::PlugProvider> provider;
};

/** Simulated instruments that have not ended. */
int liveInstruments();

} // namespace hosts
