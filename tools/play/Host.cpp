#include "tools/play/Host.h"

#include "hostapi/IExternalEffectUsingSKI.h"
#include "tools/play/live/Keyboard.h"
#include "tools/play/studio/ProjectFile.h"

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

std::unique_ptr<Studio> studioFor(const HostFamily& family, const Options& options)
{
    if (!family.hasStudio)
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
    return std::make_unique<Studio>(opened, ports, family.isUnicode);
}

} // namespace

Host::Host(const Options& options)
: hostFamily(parseHostFamily(options.host, options.unicode))
, editorLibraryPath(installedEditorLibrary())
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
    editorLibraryPath = options.library;
    library = std::make_unique<EditorLibrary>(options.library);
    service = owned(new EditorService(*library));
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
        return "lent by the host's service from " + editorLibraryPath;
    if (EditorLibrary::isLoaded(installedEditorLibrary()))
        return "loaded by the plug-in from " + installedEditorLibrary();
    return "unknown";
}

} // namespace play
} // namespace Vst
} // namespace Steinberg
