#include "tests/doubles/HostDeviceDouble.h"

#include "tests/doubles/NonsenseText.h"

namespace doubles {

using namespace Steinberg;

class HostDeviceDouble::Connector final : public Facet<IConnector> {
public:
    using Facet::Facet;

    std::set<const FUnknown*> fed;

    bool PLUGIN_API isConnectedTo(IDevice* device) override
    {
        return called("isConnectedTo", books.nameOf(device)) &&
               books.script.toldFlag(fed.count(device) > 0);
    }
};

HostDeviceDouble::HostDeviceDouble(HostBooks& host, const std::string& name,
                                   HostUpdatesDouble& notices)
: Counted(host, "device(" + name + ")")
, updates(notices)
, label(name)
{
}

HostDeviceDouble& HostDeviceDouble::addChild(const std::string& name, const std::string& childType)
{
    auto& child = books.make<HostDeviceDouble>(name, updates);
    child.type = childType;
    children.push_back(&child);
    return child;
}

HostValueDouble& HostDeviceDouble::value(const std::string& name)
{
    auto*& found = values[name];
    if (!found)
        found = &books.make<HostValueDouble>(label + "." + name, updates);
    return *found;
}

void HostDeviceDouble::offerConnector()
{
    if (!connector)
        connector = &books.make<Connector>("connector(" + label + ")", *this);
}

void HostDeviceDouble::connectTo(HostDeviceDouble& track)
{
    offerConnector();
    connector->fed.insert(track.unknown());
}

void* HostDeviceDouble::face(const TUID queried)
{
    if (connector && FUnknownPrivate::iidEqual(queried, IConnector::iid))
        return newReference<IConnector>(connector);
    const bool matches = books.unicode ? FUnknownPrivate::iidEqual(queried, IDevice::iid)
                                       : FUnknownPrivate::iidEqual(queried, IDeviceNotUnicodeID);
    return matches || isFUnknown(queried) ? newReference<IDevice>(this) : nullptr;
}

const char* HostDeviceDouble::getDeviceType()
{
    if (!called("getDeviceType") || !hasType)
        return nullptr;
    const auto nonsense = books.script.toldText();
    toldType = nonsense ? nonsenseBytes(*nonsense) : type;
    return toldType.c_str();
}

IValue* HostDeviceDouble::getValue(const char* name)
{
    if (!called("getValue", name) || !name)
        return nullptr;
    const auto found = values.find(name);
    return found == values.end() ? nullptr : newReference<IValue>(found->second);
}

int32 HostDeviceDouble::countChildren()
{
    return called("countChildren") ? books.script.told(static_cast<int32>(children.size())) : 0;
}

IDevice* HostDeviceDouble::getChild(int32 index)
{
    const bool valid = index >= 0 && static_cast<size_t>(index) < children.size();
    return called("getChild", index) && valid ? children[static_cast<size_t>(index)] : nullptr;
}

} // namespace doubles
