// ControllerContext: what the controller's collaborators see of the controller.
#pragma once

#include "pluginterfaces/base/funknown.h"
#include "pluginterfaces/base/iupdatehandler.h"
#include "pluginterfaces/base/smartpointer.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Answers change over the controller's life, so collaborators ask at each use and keep nothing.
    Every pointer may be null and is borrowed, but for the host's objects: the host may replace them
    meanwhile, so these are references of the asker's own. [host main thread unless something else
    is said] */
class ControllerContext {
public:
    /** The host context of initialize; null before it and after terminate. [any thread] */
    virtual IPtr<FUnknown> getHostContext() const = 0;

    /** The component handler that the host set; null before it and after terminate. [any thread] */
    virtual IPtr<IComponentHandler> getComponentHandler() const = 0;

    /** The bound editor library; null when unbound. */
    virtual VstIEditorConnect* getEditorConnection() const = 0;

    /** The controller as the dependent of the host's update handler. */
    virtual IDependent* getDependent() = 0;

    /** Whether the host offers IHostApplicationW and says that its texts are Unicode. Asks the host
        each time. [any thread] */
    virtual bool isUnicodeAppHost() const = 0;

    /** 0: a host of the Cubase family, 1: the maker's stand-alone host, 2: any other. [any thread]
     */
    virtual int32 getVSTHostType() const = 0;

    /** Tells the host that the latency changed, through the controller's own virtual operation.
        [any thread] */
    virtual void changeLatencyTrigger() = 0;

protected:
    ~ControllerContext() = default;
};

} // namespace Vst
} // namespace Steinberg
