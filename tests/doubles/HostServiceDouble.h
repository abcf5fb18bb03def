// HostServiceDouble: the host's component factory, the service component that it makes, and that
// component's service. Before offer() the factory makes nothing, as in a host without the service.
//
//   host.service.offer(&library, handle);     // the connection and the handle for setPluginInfo
//   host.service.registerResult = kResultFalse;    host.service.setsPluginInfo = false;
//   trace: "componentFactory.createComponent(UID, BBA9...)", "component(1).getService()",
//          "service.registerPlugin(object)", "componentFactory.destroyComponent(component(1))"
#pragma once

#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/IExternalPlugin.h"
#include "hostapi/IComponentFactory.h"
#include "tests/doubles/Counted.h"

namespace doubles {

/** The ledger wants a component destroyed and its getter released. */
class HostServiceDouble {
public:
    explicit HostServiceDouble(HostBooks& host);

    void offer(Steinberg::Vst::VstIEditorConnect* connection, void* libraryHandle);

    // What the component factory answers to.
    bool makesComponent = false;
    std::string key = "UID";
    std::string value = "BBA9E2BA9E28483CAA608081B0166B85";

    // What the component is.
    bool offersGetter = true;
    bool offersPluginBase = false;
    Steinberg::tresult initializeResult = Steinberg::kResultOk;
    Steinberg::tresult terminateResult = Steinberg::kResultOk;

    // What the service does.
    bool givesService = true;
    bool setsPluginInfo = true;
    Steinberg::tresult registerResult = Steinberg::kResultOk;
    Steinberg::tresult unregisterResult = Steinberg::kResultOk;
    Steinberg::Vst::VstIEditorConnect* connection = nullptr;
    void* libraryHandle = nullptr;

    // What came of it.
    std::vector<Steinberg::IExternalPlugin*> registered; ///< borrowed, in order of registration
    Steinberg::FUnknown* initializeContext = nullptr;    ///< what the component was started with

private:
    class Factory;
    class Component;
    class Service;

    Steinberg::IExtensionVSTService& service;
    int componentsMade = 0;
};

} // namespace doubles
