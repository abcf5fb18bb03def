#include "controller/PortManager.h"

#include "basics/CallGuard.h"
#include "controller/HostAndLibrary.h"
#include "controller/HostInterface.h"
#include "controller/PortNames.h"
#include "editorlib/VstIEditorConnect.h"
#include "hostapi/IBusDescriptor.h"
#include "hostapi/IComponentPortHandler.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostPort.h"
#include "hostapi/IPortRegistry.h"
#include "support/CharacterConvert.h"
#include "support/DAWInfo.h"

#include <algorithm>

namespace Steinberg {
namespace Vst {

namespace {

/** The instrument's port that is removed from the host's "all MIDI inputs". */
constexpr auto kPortToRemove = "Port4";

constexpr int32 kBuses = 2;
constexpr int32 kChannelsOfABus = 2;
constexpr size_t kChannels = 4;
constexpr int64 kLeftAndRight = 3;
constexpr int32 kNothingRemoved = 1;
constexpr int32 kFirstStart = 1;

IPtr<IPortRegistry> portRegistry(const HostAndLibrary& outside)
{
    const FUnknownPtr<IHostClasses> hostClasses(outside.hostContext.get());
    return hostInterface<IPortRegistry>(hostClasses);
}

/** Calls visit for each port until it returns false. Asks for the number of ports each time, since
    it may change in between. */
template <typename Visit>
void visitPorts(IPortRegistry& registry, Visit&& visit)
{
    for (int32 index = 0; index < registry.getPortCount(); ++index) {
        IHostPort* port = registry.getPortByIndex(index);
        if (port && !visit(*port))
            return;
    }
}

bool isAudioInput(IHostPort& port)
{
    return port.isPortType("audio") && port.isInputPort();
}

/** Calls visit for each audio input, and tells it whether the texts are Unicode. */
template <typename Visit>
void visitAudioInputs(const HostAndLibrary& outside, Visit&& visit)
{
    const auto registry = portRegistry(outside);
    if (!registry)
        return;
    const bool isUnicode = outside.isUnicodeHost();
    visitPorts(*registry, [&](IHostPort& port) {
        if (isAudioInput(port))
            visit(port, isUnicode);
        return true;
    });
}

bool isMidiOutput(IHostPort& port)
{
    return !port.isInputPort() && port.isPortType("midi");
}

std::string toText(const char16* text, bool isUnicode)
{
    return CharacterConvert::ConvertHostText(text, isUnicode);
}

bool readPortId(IHostPort& port, bool isUnicode, std::string& id)
{
    StringObject text;
    if (!port.getPortId(text))
        return false;
    id = CharacterConvert(text, isUnicode).getStdString();
    return true;
}

void showPort(IPortRegistry& registry, const std::string& id)
{
    if (IHostPort* port = registry.findPortById(id.c_str()))
        port->setDisplayed(true);
}

/** Makes a stereo bus; null when the host cannot. */
IPtr<IBusDescriptor> stereoBus(IHostClasses* hostClasses)
{
    IPtr<IBusDescriptor> bus;
    guarded([&] {
        bus = hostInterface<IBusDescriptor>(hostClasses);
        if (bus)
            bus->setArrangement(kLeftAndRight);
    });
    return bus;
}

} // namespace

std::vector<VSTiAudioPort::AudioPortInfo>* PortManager::getAudioPortList() noexcept
{
    std::vector<VSTiAudioPort::AudioPortInfo> list;
    guarded([&] { listAudioPorts(list); });
    audioPortInfoList = std::move(list);
    return &audioPortInfoList;
}

void PortManager::listAudioPorts(std::vector<VSTiAudioPort::AudioPortInfo>& list) const
{
    const PortIds held = audioPortIdList;
    visitAudioInputs(outside, [&](IHostPort& port, bool isUnicode) {
        VSTiAudioPort::AudioPortInfo info;
        info.portName = toText(port.getDisplayName(), isUnicode);
        // A hidden port is listed only if this plug-in has hidden it.
        if (readPortId(port, isUnicode, info.portId) &&
            (port.isDisplayed() || holds(held, info.portId)))
            list.push_back(std::move(info));
    });
}

std::vector<VSTiMidiPort::MidiOutPortInfo>* PortManager::getMidiOutPortList() noexcept
{
    std::vector<VSTiMidiPort::MidiOutPortInfo> list;
    guarded([&] { listMidiOutPorts(list); });
    midiOutPortInfoList = std::move(list);
    return &midiOutPortInfoList;
}

void PortManager::listMidiOutPorts(std::vector<VSTiMidiPort::MidiOutPortInfo>& list) const
{
    const FUnknownPtr<IComponentPortHandler> portHandler(outside.componentHandler.get());
    if (!portHandler)
        return;
    const auto registry = portRegistry(outside);
    if (!registry)
        return;
    const bool isUnicode = outside.isUnicodeHost();
    // One record for all ports: a port whose ID cannot be read is listed with the previous ID.
    VSTiMidiPort::MidiOutPortInfo info;
    visitPorts(*registry, [&](IHostPort& port) {
        if (!isMidiOutput(port) || port.hasPortAttribute("virtual") ||
            port.hasPortAttribute("proxy"))
            return true;
        info.portName = toText(port.getDisplayName(), isUnicode);
        if (!port.isDisplayed())
            return true;
        readPortId(port, isUnicode, info.portId);
        list.push_back(info);
        return true;
    });
}

void PortManager::setMidiOutPort(const char* id)
{
    const auto registry = portRegistry(outside);
    const FUnknownPtr<IComponentPortHandler> portHandler(outside.componentHandler.get());
    if (!portHandler || !registry)
        return;
    const bool isUnicode = outside.isUnicodeHost();
    IHostPort* found = nullptr;
    visitPorts(*registry, [&](IHostPort& port) {
        std::string portId;
        // A proxy is not listed, but can be chosen.
        if (isMidiOutput(port) && !port.hasPortAttribute("virtual") &&
            readPortId(port, isUnicode, portId) && id && portId == id)
            found = &port;
        return !found;
    });
    if (found)
        portHandler->setMidiOutputPorts(&found, 1, &found, 1);
    else
        portHandler->setMidiOutputPorts(nullptr, 0, nullptr, 0);
}

void PortManager::setAudioPortList(const char** ids)
{
    if (!ids)
        return;
    const FUnknownPtr<IHostClasses> hostClasses(outside.hostContext.get());
    const auto registry = hostInterface<IPortRegistry>(hostClasses);
    const FUnknownPtr<IComponentPortHandler> portHandler(outside.componentHandler.get());
    if (!portHandler || !registry)
        return;

    const bool isUnicode = outside.isUnicodeHost();
    const PortIds held = audioPortIdList;
    PortIds taken;
    taken.reserve(kChannels);
    // Nothing below may throw: a port that was hidden and not remembered would stay hidden
    // for good.
    IPtr<IBusDescriptor> buses[kBuses];
    for (auto& bus : buses) {
        bus = stereoBus(hostClasses);
        for (int32 channel = 0; channel < kChannelsOfABus; ++channel, ++ids) {
            IHostPort* port = guarded<IHostPort*>(
                nullptr, [&] { return takeAudioPort(*registry, *ids, isUnicode, held, taken); });
            if (bus)
                guarded([&] { bus->setChannelPort(channel, port); });
        }
    }
    // The host takes over the descriptors with their references.
    IBusDescriptor* handedOver[kBuses] = {buses[0].take(), buses[1].take()};
    guarded([&] { portHandler->setAudioInputBuses(0, 0, handedOver, kBuses); });

    for (const std::string& id : held)
        guarded([&] {
            if (isExistAudioPortIdList(id, taken))
                showPort(*registry, id);
        });
    audioPortIdList = std::move(taken);
} // untaken: compiler

IHostPort* PortManager::takeAudioPort(IPortRegistry& registry, const char* id, bool isUnicode,
                                      const PortIds& held, PortIds& taken)
{
    if (!id || *id == 0)
        return nullptr;
    IHostPort* result = nullptr;
    visitPorts(registry, [&](IHostPort& port) {
        std::string portId;
        if (!isAudioInput(port) || !readPortId(port, isUnicode, portId) || portId != id)
            return true;
        // A port that the user or another plug-in has hidden is not taken.
        if (port.isDisplayed() || holds(held, portId)) {
            port.setDisplayed(false);
            taken.push_back(std::move(portId));
            result = &port;
        }
        return false;
    });
    return result;
}

bool PortManager::isConnectAudioPortHost() const
{
    const FUnknownPtr<IHostApplicationW> application(outside.hostContext.get());
    if (!application)
        return true;
    const DAWInfo host(application);
    switch (host.getHostType()) {
    case DAWInfo::kUnknownHost:
        return outside.getHostKind() != kStandaloneHost;
    case DAWInfo::kNuendo:
        return host.CompareVersion(5, 0, 0) < 0;
    default:
        return host.CompareVersion(5, 1, 0) < 0;
    }
}

bool PortManager::hostReadyForSetPortConnections() noexcept
{
    VstIEditorConnect* connection = outside.library.getConnection();
    if (!connection)
        return false;
    guarded([this] { allMidiInputRemove(kPortToRemove); });
    guarded([this] { firstStartAudioportDisplayCompulsorily(); });
    guarded([&] { connection->onHostPortsReady(!initialStartFileLoad); });
    hostReadyForSetPort = true;
    guarded([&] { connection->onInitialStartFileLoad(initialStartFileLoad); });
    return true;
}

int32 PortManager::allMidiInputRemove(const std::string& text)
{
    // untaken: compiler
    if (text.empty() || !FUnknownPtr<IComponentPortHandler>(outside.componentHandler.get()))
        return kNothingRemoved;
    const auto registry = portRegistry(outside);
    if (!registry)
        return kNothingRemoved;
    const bool isUnicode = outside.isUnicodeHost();
    int32 result = kNothingRemoved;
    visitPorts(*registry, [&](IHostPort& port) {
        if (isOurMidiPort(port, text, isUnicode))
            result = registry->removeFromAllMidiInputs(&port);
        return true;
    });
    return result;
}

bool PortManager::isOurMidiPort(IHostPort& port, const std::string& text, bool isUnicode) const
{
    if (!port.isPortType("midi") || port.hasPortAttribute("virtual") ||
        port.hasPortAttribute("proxy"))
        return false;
    const std::string name = toText(port.getSystemName(), isUnicode);
    VstIEditorConnect* connection = outside.library.getConnection();
    const auto matches = [&](const char* pattern) {
        return connection && guarded(false, [&] {
                   return connection->matchRegularExpression(pattern, name.c_str());
               });
    };
    return std::any_of(std::begin(kBasicPortNameRE), std::end(kBasicPortNameRE),
                       [&](const char* pattern) {
                           return matches(pattern) && name.find(text) != std::string::npos;
                       });
}

void PortManager::firstStartAudioportDisplayCompulsorily()
{
    VstIEditorConnect* connection = outside.library.getConnection();
    if (!connection ||
        guarded(int32{0}, [&] { return connection->getFirstStartState(); }) != kFirstStart)
        return;
    visitAudioInputs(outside, [&](IHostPort& port, bool isUnicode) {
        const std::string name = toText(port.getDisplayName(), isUnicode);
        if (guarded(false, [&] { return connection->isDisplayAudioPort(name.c_str()); }))
            port.setDisplayed(true);
    });
}

void PortManager::releasePorts(IPortRegistry* registry) noexcept
{
    PortIds held;
    guarded([&] { held = PortIds(audioPortIdList); });
    // Out of memory: use the list itself in place of a copy.
    if (held.size() != audioPortIdList.size())
        held = std::move(audioPortIdList);
    if (registry)
        for (const std::string& id : held)
            guarded([&] { showPort(*registry, id); });
    audioPortIdList.clear();
}

bool PortManager::holds(const PortIds& list, const std::string& id)
{
    return !isExistAudioPortIdList(id, list);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers rely on this signature
bool PortManager::isExistAudioPortIdList(std::string id, const std::vector<std::string>& list)
{
    return std::find(list.begin(), list.end(), id) == list.end();
}

} // namespace Vst
} // namespace Steinberg
