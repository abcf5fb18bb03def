// World: the loaded plug-in in a scripted host, with a scripted library from the host's service or
// from the fixed place.
//
//   World world(HostFamily::cubase("7.5.1"), Binding::kService);
//   world.start();  world.library.turn(kVolume1, 3);  world.end();
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "public.sdk/source/vst/hosting/module.h"
#include "tests/doubles/InProcessLibrary.h"
#include "tests/doubles/LoadedLibrary.h"
#include "tests/doubles/ScriptedHost.h"

#include <gmock/gmock.h>

namespace faults {

enum class Binding { kService, kLibrary };

constexpr unsigned kVolume1 = 37012000;

/** The name of a track's output that plays the instance "Synth 1". */
constexpr auto kRoutedHere = "Synth 1 - RDL3/RDL5 VST";

class World {
public:
    World(const doubles::HostFamily& family, Binding bound);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    const Binding binding;
    doubles::Trace trace;
    doubles::ScriptedHost host;
    doubles::Trace fileTrace; ///< of the file in the fixed place when a service is to be bound
    std::optional<doubles::LoadedLibrary> file;
    std::optional<doubles::InProcessLibrary> inProcess;
    doubles::ScriptedLibrary& library; ///< the one that is to be bound

    Steinberg::IPtr<Steinberg::Vst::IComponent> component;
    Steinberg::IPtr<Steinberg::Vst::IEditController> controller;

    /** Makes a call of the host, a user or the library. Fails if the call throws. */
    template <typename Call>
    void step(const char* name, Call&& call)
    {
        const bool before = hasFailed();
        try {
            call();
        } catch (const std::exception& exception) {
            ADD_FAILURE() << name << " threw an exception: " << exception.what();
        } catch (...) {
            ADD_FAILURE() << name << " threw something else";
        }
        if (!before && hasFailed())
            failedStep = name;
    }

    std::string failedStep; ///< the step in which the fault happened; empty: none yet

    /** Releases the plug-in's factory and loads it again. There must be no component.
        @return null if the plug-in gives no factory; then there is none until the next call */
    static const VST3::Hosting::PluginFactory* loadAgain();

    // Each of these may follow another one that failed.
    void create();
    void initialize();
    void connect();
    void disconnect();
    void terminate();
    void release();

    /** create, initialize and connect; disconnect, terminate and release. */
    void start();
    void end();

    Steinberg::tresult initializeResult = Steinberg::kResultFalse; ///< the controller's
    Steinberg::tresult terminateResult = Steinberg::kResultFalse;

    Steinberg::IPtr<Steinberg::Vst::IConnectionPoint> controllerPoint() const;
    Steinberg::IPtr<Steinberg::Vst::IConnectionPoint> processorPoint() const;
    std::vector<std::string> calls(const std::vector<std::string>& prefixes) const
    {
        return trace.textsOf(prefixes);
    }

private:
    bool hasFailed() const;
};

} // namespace faults
