// Instance: one plug-in instance of a host, its component and its controller.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstmessage.h"
#include "public.sdk/source/vst/hosting/processdata.h"
#include "tools/common/Failure.h"
#include "tools/common/PlugIn.h"

#include <memory>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace tools {

/** The plug-in's controller does not initialize. */
class NoEditorLibrary : public Failure {
public:
    using Failure::Failure;
};

/** Makes, initializes and connects both parts, as a host does, in the constructor, and takes them
    down in the reverse order in the destructor.

    [host main thread] */
class Instance {
public:
    /** @param hostContext, handler borrowed; outlive this object
        @throws NoEditorLibrary when the controller does not initialize, Failure when another part
        does not or cannot be made */
    Instance(const PlugIn& plugIn, FUnknown& hostContext, IComponentHandler& handler);
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /** Activates all buses and starts processing.
        @throws Failure when the plug-in refuses the set-up */
    void start(int32 sampleRate, int32 blockSize);
    void stop();

    /** The component's state. @throws Failure when the plug-in does not save */
    std::vector<char> state();

    /** @throws Failure when the plug-in refuses the state */
    void restore(const std::vector<char>& bytes);

    IComponent& component() { return *componentPart; }
    IAudioProcessor& processor() { return *processorPart; }
    IEditController& controller() { return *controllerPart; }

    /** Process data with buffers for every bus; valid between start and stop. */
    ProcessData& processData() { return data; }

private:
    void makeController(const PlugIn& plugIn, FUnknown& hostContext, IComponentHandler& handler);
    void connect();
    void activateBuses(bool state);

    /** Terminates a part that did initialize. */
    struct Terminate {
        void operator()(IPluginBase* part) const { part->terminate(); }
    };
    using Initialized = std::unique_ptr<IPluginBase, Terminate>;

    // In this order, so that what was initialized is terminated before it is released.
    IPtr<IComponent> componentPart;
    IPtr<IAudioProcessor> processorPart;
    IPtr<IEditController> controllerPart;
    Initialized initializedComponent;
    Initialized initializedController;
    IPtr<IConnectionPoint> componentPoint;
    IPtr<IConnectionPoint> controllerPoint;
    HostProcessData data;
    bool isStarted = false;
};

} // namespace tools
} // namespace Vst
} // namespace Steinberg
