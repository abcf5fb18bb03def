// hostInterface: asks the host for one of its extension objects.
#pragma once

#include "hostapi/IHostClasses.h"
#include "pluginterfaces/base/smartpointer.h"

namespace Steinberg {
namespace Vst {

/** Gets the host's object with the ID of Interface, as a new reference; null when hostClasses is
    null or does not have the object. Throws what the host throws. [threads as at IHostClasses] */
template <class Interface>
IPtr<Interface> hostInterface(IHostClasses* hostClasses)
{
    void* object = nullptr;
    if (!hostClasses || hostClasses->getHostInterface(Interface::iid, &object) != kResultOk)
        return {};
    return owned(static_cast<Interface*>(object));
}

} // namespace Vst
} // namespace Steinberg
