#include "tools/host/studio/HostDevice.h"

namespace Steinberg {
namespace Vst {
namespace play {

HostDevice::HostDevice(std::string deviceType, bool isUnicode)
: TreeObject(isUnicode ? IDevice::iid.toTUID() : IDeviceNotUnicodeID)
, type(std::move(deviceType))
{
}

HostDevice& HostDevice::add(const IPtr<HostDevice>& child)
{
    children.push_back(child);
    return *child;
}

HostValue& HostDevice::add(const std::string& name, const IPtr<HostValue>& value)
{
    values.emplace_back(name, value);
    return *value;
}

tresult PLUGIN_API HostDevice::queryInterface(const TUID wanted, void** obj)
{
    if (connector && obj && FUnknownPrivate::iidEqual(wanted, IConnector::iid))
        return connector->queryInterface(wanted, obj);
    return TreeObject::queryInterface(wanted, obj);
}

IValue* PLUGIN_API HostDevice::getValue(const char* name)
{
    for (const auto& [known, value] : values)
        if (name && known == name) {
            value->addRef();
            return value;
        }
    return nullptr;
}

IDevice* PLUGIN_API HostDevice::getChild(int32 index)
{
    return index >= 0 && index < countChildren() ? children[static_cast<size_t>(index)].get()
                                                 : nullptr;
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
