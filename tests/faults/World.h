// World: the loaded plug-in in a scripted host, with a scripted library that is bound in one of the
// two ways. A scenario's steps are a host's, a user's or the library's calls.
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

/** What a track shows as its output that plays the instance "Synth 1". */
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
    doubles::Trace fileTrace; ///< of the file in the fixed place while a service is to be bound
    std::optional<doubles::LoadedLibrary> file;
    std::optional<doubles::InProcessLibrary> inProcess;
    doubles::ScriptedLibrary& library; ///< the one that is to be bound

    Steinberg::IPtr<Steinberg::Vst::IComponent> component;
    Steinberg::IPtr<Steinberg::Vst::IEditController> controller;

    /** One call of the host's, the user's or the library's. No exception may come out of it. */
    template <typename Call>
    void step(const char* name, Call&& call)
    {
        const bool before = hasFailed();
        try {
            call();
        } catch (const std::exception& exception) {
            ADD_FAILURE() << name << " let an exception out: " << exception.what();
        } catch (...) {
            ADD_FAILURE() << name << " let something out";
        }
        if (!before && hasFailed())
            failedStep = name;
    }

    std::string failedStep; ///< in which the fault came about; empty: in none yet

    /** Lets go of the plug-in's factory, while no component is there, and asks for it again.
        @return null when the plug-in has none to give; there is none then until the next time */
    static const VST3::Hosting::PluginFactory* loadAgain();

    // The life of both components, in parts. A part that failed does not keep a host from ending.
    void create();
    void initialize();
    void connect();
    void disconnect();
    void terminate();
    void release();

    /** From nothing to connected, and back. */
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
