#include "tools/play/Host.h"

#include "hostapi/IExternalEffectUsingSKI.h"
#include "tools/common/Failure.h"
#include "tools/play/live/Keyboard.h"
#include "tools/play/ProjectFile.h"

#include <filesystem>

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

/** Ports that a live player can have the editor choose, under their names. */
std::vector<PortDescription> livePorts()
{
    std::vector<PortDescription> ports;
    for (const auto& name : machineMidiOutputs())
        ports.push_back({name, name, PortDescription::Type::midi, false});
    return ports;
}

/** The library that the host's service lends plug-ins; none where they load their own. */
tools::LibraryHandle lentLibrary(const Options& options)
{
    if (options.binding != Options::Binding::service)
        return {};
    const auto& path = options.library;
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        throw tools::Failure("The editor library \"" + path + "\" is missing.");
    tools::LibraryHandle loaded(path);
    if (!loaded)
        throw tools::Failure("The editor library \"" + path + "\" cannot be loaded.");
    if (!loaded.connectEntry())
        throw tools::Failure("\"" + path + "\" is not an editor library.");
    return loaded;
}

std::unique_ptr<Studio> studioFor(const HostFamily& family, const Options& options)
{
    if (!family.hasExtensions)
        return nullptr;
    const auto& project = options.tracks;
    Project opened;
    if (project == "demo")
        opened = demoProject();
    else if (!project.empty())
        opened = readProject(project);
    auto ports = usualPorts();
    if (options.live)
        for (auto& port : livePorts())
            ports.push_back(std::move(port));
    return std::make_unique<Studio>(opened, ports, family.unicode);
}

} // namespace

Host::Host(const Options& options)
: hostFamily(parseHostFamily(options.host, options.unicode))
, usedLibrary(editorLibraryPath())
, library(lentLibrary(options))
, hostStudio(studioFor(hostFamily, options))
, loop(owned(new RunLoop))
, componentHandler(
      owned(hostStudio ? new ComponentHandler(&hostStudio->portHandler()) : new ComponentHandler))
, hostContext(std::make_unique<HostContext>(hostFamily, loop))
{
    const auto hostClasses = owned(new HostClasses);
    if (hostStudio)
        hostStudio->offerThrough(*hostClasses);
    if (options.binding == Options::Binding::service)
        offerService(options, *hostClasses);
    if (hostStudio || service)
        hostContext->offerExtension(hostClasses);
}

Host::~Host() = default;

void Host::offerService(const Options& options, HostClasses& hostClasses)
{
    usedLibrary = options.library;
    const auto connectEntry = library.connectEntry();
    service = owned(new EditorService(
        [connectEntry] {
            VstIEditorConnect* connection = nullptr;
            connectEntry(&connection);
            return connection;
        },
        library.get()));
    const IPtr<FUnknown> factory(new ServiceComponentFactory(service), false);
    hostClasses.offer(IComponentFactory::iid, factory);
}

void Host::announcePorts(IEditController& controller)
{
    const FUnknownPtr<IExternalEffectUsingSKI> plugIn(&controller);
    if (hostStudio && plugIn)
        plugIn->hostReadyForSetPortConnections();
}

std::string Host::binding() const
{
    if (service && service->pluginCount() > 0)
        return "lent by the host's service from " + usedLibrary;
    if (tools::LibraryHandle::isLoaded())
        return "loaded by the plug-in from " + editorLibraryPath();
    return "unknown";
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
