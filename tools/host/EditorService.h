// EditorService: the host-side service that lends plug-ins the host's editor library.
#pragma once

#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/VstIEditorConnect.h"
#include "hostapi/IComponentFactory.h"
#include "pluginterfaces/base/funknownimpl.h"

#include <atomic>
#include <functional>
#include <utility>
#include <vector>

namespace Steinberg {
namespace Vst {
namespace play {

/** Gives every registered plug-in a connection of its own and ends it when the plug-in leaves.
    [host main thread] */
class EditorService final : public IExtensionVSTService {
public:
    /** @param connectLibrary makes a connection, which ends with destroy(), or null
        @param libraryHandle of the library, which stays loaded as long as this object */
    EditorService(std::function<VstIEditorConnect*()> connectLibrary, void* libraryHandle)
    : connect(std::move(connectLibrary))
    , handle(libraryHandle)
    {
    }
    virtual ~EditorService();
    EditorService(const EditorService&) = delete;
    EditorService& operator=(const EditorService&) = delete;

    tresult PLUGIN_API registerPlugin(IExternalPlugin* plugin) override;
    tresult PLUGIN_API unregisterPlugin(IExternalPlugin* plugin) override;

    tresult PLUGIN_API queryInterface(const TUID wanted, void** obj) override;
    uint32 PLUGIN_API addRef() override { return ++references; }
    uint32 PLUGIN_API release() override;

    /** Plug-ins that use the service now. */
    size_t pluginCount() const { return connections.size(); }

private:
    std::function<VstIEditorConnect*()> connect;
    void* handle;
    std::vector<std::pair<IExternalPlugin*, VstIEditorConnect*>> connections;
    std::atomic<uint32> references{1};
};

/** The component that the plug-in looks the service up by. */
class EditorServiceGetter final : public U::Implements<U::Directly<IExtensionVSTServiceGetter>> {
public:
    explicit EditorServiceGetter(const IPtr<EditorService>& editorService)
    : service(editorService)
    {
    }
    FUnknown* PLUGIN_API getService() override { return service; }

private:
    IPtr<EditorService> service;
};

/** Makes an EditorServiceGetter for the service component's class ID and nothing else. */
class ServiceComponentFactory final : public U::Implements<U::Directly<IComponentFactory>> {
public:
    explicit ServiceComponentFactory(const IPtr<EditorService>& editorService)
    : service(editorService)
    {
    }
    FUnknown* PLUGIN_API createComponent(const char* key, const char* value) override;
    void PLUGIN_API destroyComponent(FUnknown* component) override;

private:
    IPtr<EditorService> service;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
