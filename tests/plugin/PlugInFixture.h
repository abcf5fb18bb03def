// PlugInFixture: the built bundle, loaded as a host loads it, and one instance of both components
// in a scripted host.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "public.sdk/source/vst/hosting/module.h"
#include "tests/doubles/LoadedLibrary.h"
#include "tests/doubles/ScriptedHost.h"

#include <gmock/gmock.h>

namespace plugin {

/** Host main thread only. */
class PlugInFixture : public ::testing::Test {
protected:
    using Texts = std::vector<std::string>;

    explicit PlugInFixture(
        const doubles::HostFamily& family = doubles::HostFamily::cubase("7.5.1"));
    ~PlugInFixture() override;

    doubles::Trace trace;
    doubles::ScriptedHost host;
    VST3::Hosting::Module::Ptr module;
    Steinberg::IPtr<Steinberg::Vst::IComponent> component;
    Steinberg::IPtr<Steinberg::Vst::IEditController> controller;

    void SetUp() override;

    /** Releases both components, which must have no other reference, and unloads the module. */
    void releaseComponents();

    Steinberg::IPtr<Steinberg::Vst::IConnectionPoint> controllerPoint() const;
    Steinberg::IPtr<Steinberg::Vst::IConnectionPoint> processorPoint() const;

    /** Initialises the processor and connects both directly, as simple hosts do. */
    void startProcessor() const;

    /** Disconnects both and ends the processor. */
    void stopProcessor() const;

    Steinberg::tresult initialize() const { return controller->initialize(&host.context); }

    /** Calls of library, service and its component, except about parameters and observers. */
    Texts lifeCycle() const;

    /** The recorded calls that take the service's component from the host and give it back. */
    static const std::string kCreate;
    static const std::string kGiveBack;
};

/** Class IDs, in a factory's byte order, from their 32 digits. */
VST3::UID classID(const std::string& digits);
VST3::UID processorID();
VST3::UID controllerID();

} // namespace plugin
