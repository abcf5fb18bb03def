#include "tools/play/Host.h"

namespace Steinberg {
namespace Vst {
namespace play {

Host::Host(const Options& options)
: hostFamily(parseHostFamily(options.host, options.unicode))
, editorLibraryPath(installedEditorLibrary())
, loop(owned(new RunLoop))
, componentHandler(owned(new ComponentHandler))
, hostContext(std::make_unique<HostContext>(hostFamily, loop))
{
    if (options.binding == Options::Binding::service)
        offerService(options);
}

Host::~Host() = default;

void Host::offerService(const Options& options)
{
    editorLibraryPath = options.library;
    library = std::make_unique<EditorLibrary>(options.library);
    service = owned(new EditorService(*library));
    auto hostClasses = owned(new HostClasses);
    hostClasses->offer(IComponentFactory::iid, owned(new ServiceComponentFactory(service)));
    hostContext->offerExtension(hostClasses);
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
