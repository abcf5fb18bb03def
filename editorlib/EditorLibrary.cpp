#include "editorlib/EditorLibrary.h"

#include "basics/CallGuard.h"
#include "editorlib/EditorLibraryNames.h"
#include "editorlib/VstIEditorConnect.h"

#include <dlfcn.h>
#include <utility>

namespace Steinberg {
namespace Vst {

namespace {

const FUID kServiceComponentUID(0xBBA9E2BA, 0x9E28483C, 0xAA608081, 0xB0166B85);

template <typename Function>
Function findSymbol(void* handle, const char* name)
{
    return handle ? reinterpret_cast<Function>(dlsym(handle, name)) : nullptr;
}

} // namespace

std::string serviceComponentID()
{
    char text[33] = {};
    kServiceComponentUID.toString(text);
    return text;
}

bool EditorLibrary::bind(ServiceGetter& getter, FUnknown* hostContext, IExternalPlugin* plugin)
{
    guarded([&] { getter.initialize(hostContext, kServiceKey, serviceComponentID().c_str()); });
    bindService(getter, plugin);
    if (binding == Binding::kService && connection.load() && libraryHandle)
        return true;
    return loadLibrary();
}

void EditorLibrary::bindService(ServiceGetter& getter, IExternalPlugin* plugin)
{
    if (!getter) {
        binding = Binding::kLibrary;
        return;
    }
    // IExtensionVSTService has no ID to query: the object that the getter gives is the service.
    guarded([&] { service = static_cast<IExtensionVSTService*>(getter->getService()); });
    if (!service)
        return;
    const auto registered =
        guarded<tresult>(kResultFalse, [&] { return service->registerPlugin(plugin); });
    if (registered != kResultOk || !connection.load()) {
        binding = Binding::kLibrary;
        return;
    }
    guarded([this] { connection.load()->attachService(); });
    binding = Binding::kService;
}

bool EditorLibrary::loadLibrary()
{
    // What a service may have set before is not used any more.
    connection = nullptr;
    libraryHandle = dlopen(editorLibraryPath().c_str(), RTLD_LAZY);
    const auto getConnect = findSymbol<GetEditorConnect>(libraryHandle, connectFuncName);
    if (!getConnect) {
        if (libraryHandle)
            dlclose(libraryHandle);
        libraryHandle = nullptr;
        return false;
    }
    VstIEditorConnect* loaded = nullptr;
    guarded([&] { getConnect(&loaded); });
    connection = loaded;
    // In service binding unload does not close the library, so one of no use is closed here.
    if (!loaded && binding == Binding::kService)
        dlclose(std::exchange(libraryHandle, nullptr));
    return loaded != nullptr;
}

void EditorLibrary::setPluginInfo(VstIEditorConnect* connect, void* handle)
{
    connection = connect;
    libraryHandle = handle;
}

void EditorLibrary::unload()
{
    if (binding == Binding::kLibrary) {
        if (VstIEditorConnect* editor = connection)
            guarded([editor] { editor->destroy(); });
        if (libraryHandle)
            dlclose(libraryHandle);
    }
    connection = nullptr;
    libraryHandle = nullptr;
}

void EditorLibrary::leaveService(IExternalPlugin* plugin)
{
    if (service && binding == Binding::kService)
        guarded([&] { service->unregisterPlugin(plugin); });
    service = nullptr;
    binding = Binding::kService;
}

GetObserver EditorLibrary::findObserverEntry() const
{
    return findSymbol<GetObserver>(libraryHandle, observerFuncName);
}

} // namespace Vst
} // namespace Steinberg
