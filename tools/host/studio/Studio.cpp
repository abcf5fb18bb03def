#include "tools/host/studio/Studio.h"

namespace Steinberg {
namespace Vst {
namespace play {

Studio::Studio(const Project& project, const std::vector<PortDescription>& ports, bool isUnicode)
: openProject(project)
, updates(owned(new UpdateHandler))
, registry(owned(new PortRegistry(ports, isUnicode)))
, handler(owned(new PortHandler(registry)))
, devices(owned(new DeviceTree(openProject, isUnicode, *updates)))
{
}

void Studio::offerThrough(HostClasses& hostClasses)
{
    hostClasses.offer(IPortRegistry::iid, registry);
    hostClasses.offer(IDeviceList::iid, devices);
    hostClasses.offer(IUpdateHandler::iid, updates->unknownCast());
    hostClasses.offerNew(IBusDescriptor::iid, [] { return owned(new BusDescriptor); });
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
