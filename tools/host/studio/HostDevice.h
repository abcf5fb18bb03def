// HostDevice: a node of the device tree of play's host.
#pragma once

#include "tools/host/studio/HostValue.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** The routing end of an instrument's output. Tracks are borrowed from the tree. */
class Connector final : public U::Implements<U::Directly<ReservedSlots<IConnector>>> {
public:
    void feed(const IDevice& track) { fed.insert(&track); }

    bool PLUGIN_API isConnectedTo(IDevice* device) override { return fed.count(device) > 0; }

private:
    std::set<const IDevice*> fed;
};

/** [host main thread] */
class HostDevice final : public TreeObject<IDevice> {
public:
    HostDevice(std::string deviceType, bool isUnicode);

    HostDevice& add(const IPtr<HostDevice>& child);
    HostValue& add(const std::string& name, const IPtr<HostValue>& value);
    /** Makes the device offer IConnector. */
    void offer(const IPtr<Connector>& newConnector) { connector = newConnector; }

    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override;
    const char* PLUGIN_API getDeviceType() override { return type.c_str(); }
    IValue* PLUGIN_API getValue(const char* name) override;
    int32 PLUGIN_API countChildren() override { return static_cast<int32>(children.size()); }
    IDevice* PLUGIN_API getChild(int32 index) override;

private:
    std::string type;
    std::vector<IPtr<HostDevice>> children;
    std::vector<std::pair<std::string, IPtr<HostValue>>> values; ///< a few
    IPtr<Connector> connector;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
