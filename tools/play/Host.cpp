#include "tools/play/Host.h"

#include "hostapi/IExternalEffectUsingSKI.h"
#include "tools/play/studio/ProjectFile.h"

namespace Steinberg {
namespace Vst {
namespace play {

namespace {

std::unique_ptr<Studio> studioFor(const HostFamily& family, const std::string& project)
{
    if (!family.hasStudio)
        return nullptr;
    Project opened;
    if (project == "demo")
        opened = demoProject();
    else if (!project.empty())
        opened = readProject(project);
    return std::make_unique<Studio>(opened, family.isUnicode);
}

} // namespace

Host::Host(const Options& options)
: hostFamily(parseHostFamily(options.host, options.unicode))
, editorLibraryPath(installedEditorLibrary())
, hostStudio(studioFor(hostFamily, options.tracks))
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
