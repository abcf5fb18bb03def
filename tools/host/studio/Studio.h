// Studio: the extension objects of play's host, for its ports and its project.
#pragma once

#include "base/source/updatehandler.h"
#include "tools/host/HostContext.h"
#include "tools/host/studio/DeviceTree.h"
#include "tools/host/studio/PortHandler.h"
#include "tools/host/studio/PortRegistry.h"

namespace Steinberg {
namespace Vst {
namespace play {

/** Outlives every plug-in that uses it. [host main thread] */
class Studio {
public:
    /** @param ports of the machine
        @param isUnicode whether the host's texts are, which also decides the IDs of its devices */
    Studio(const Project& project, const std::vector<PortDescription>& ports, bool isUnicode);

    /** Offers all objects but the port handler, which the component handler offers. */
    void offerThrough(HostClasses& hostClasses);

    const PortRegistry& ports() const { return *registry; }
    PortHandler& portHandler() { return *handler; }
    const Project& project() const { return openProject; }
    DeviceTree& tree() { return *devices; }

private:
    Project openProject;
    IPtr<UpdateHandler> updates; ///< before the tree, whose values tell it
    IPtr<PortRegistry> registry;
    IPtr<PortHandler> handler;
    IPtr<DeviceTree> devices;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
