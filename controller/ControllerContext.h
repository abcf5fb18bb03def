// ControllerContext: what the controller's collaborators see of the controller.
#pragma once

#include "pluginterfaces/base/funknown.h"
#include "pluginterfaces/base/iupdatehandler.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** Answers change over the controller's life, so collaborators ask at each use and keep nothing.
    Every pointer is borrowed and may be null. [host main thread unless the caller says otherwise]
 */
class ControllerContext {
public:
    /** The host context of initialize; null before it and after terminate. */
    virtual FUnknown* getHostContext() const = 0;

    /** The component handler that the host set; null before it and after terminate. */
    virtual IComponentHandler* getComponentHandler() const = 0;

    /** The bound editor library; null when unbound. */
    virtual VstIEditorConnect* getEditorConnection() const = 0;

    /** The controller as the dependent of the host's update handler. */
    virtual IDependent* getDependent() = 0;

    /** Whether the host offers IHostApplicationW and says that its texts are Unicode. Asks the host
        each time. [any thread] */
    virtual bool isUnicodeAppHost() const = 0;

    /** 0: a host of the Cubase family, 1: the maker's stand-alone host, 2: any other. */
    virtual int32 getVSTHostType() const = 0;

    /** Tells the host that the latency changed, through the controller's own virtual operation. */
    virtual void changeLatencyTrigger() = 0;

protected:
    ~ControllerContext() = default;
};

} // namespace Vst
} // namespace Steinberg
