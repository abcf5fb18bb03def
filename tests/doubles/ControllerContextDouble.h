// ControllerContextDouble: the controller as its collaborators see it, over a scripted host and a
// scripted library.
//
//   ControllerContextDouble context(host, &library);        // or nullptr: unbound
//   PortManager ports(context);                             // the object under test, alone
//   context.onUpdate = [&](FUnknown* object, int32 message) { routing.update(object, message); };
//   trace: "controller.changeLatencyTrigger()", "controller.update(device(Mixer), 1)"
#pragma once

#include "controller/ControllerContext.h"
#include "tests/doubles/ScriptedHost.h"
#include "tests/doubles/ScriptedLibrary.h"

namespace doubles {

class ControllerContextDouble final : public Steinberg::Vst::ControllerContext {
public:
    ControllerContextDouble(ScriptedHost& scriptedHost, ScriptedLibrary* scriptedLibrary);
    virtual ~ControllerContextDouble();
    ControllerContextDouble(const ControllerContextDouble&) = delete;
    ControllerContextDouble& operator=(const ControllerContextDouble&) = delete;

    // Borrowed; tests set them to null as they like.
    Steinberg::FUnknown* hostContext;
    Steinberg::Vst::IComponentHandler* handler;
    Steinberg::Vst::VstIEditorConnect* library;

    bool unicode;              ///< as the host says at construction
    Steinberg::int32 hostType; ///< 1 for "Standalone", 0 for other hosts with extensions, else 2
    std::function<void(Steinberg::FUnknown*, Steinberg::int32)> onUpdate;

    Steinberg::IPtr<Steinberg::FUnknown> getHostContext() const override { return hostContext; }
    Steinberg::IPtr<Steinberg::Vst::IComponentHandler> getComponentHandler() const override
    {
        return handler;
    }
    Steinberg::Vst::VstIEditorConnect* getEditorConnection() const override { return library; }
    Steinberg::IDependent* getDependent() override;
    bool isUnicodeAppHost() const override { return unicode; }
    Steinberg::int32 getVSTHostType() const override { return hostType; }
    void changeLatencyTrigger() override;

private:
    class Dependent;

    ScriptedHost& host;
    Dependent& dependent;
};

} // namespace doubles
