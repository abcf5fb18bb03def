// EditorLibrary: finds, binds and unbinds the editor library.
#pragma once

#include "editorlib/EntryPoints.h"
#include "editorlib/FComponentPtr.h"
#include "editorlib/IExtensionVSTServiceGetter.h"
#include "editorlib/IExternalPlugin.h"

#include <atomic>
#include <string>

namespace Steinberg {
namespace Vst {

class VstIEditorConnect;

/** The controller's connection to the library. Either a host-side service hands over a connection
    and a library handle, which it keeps owning; or the library file is loaded here, and its
    connection destroyed and the file closed here as well.

    Unbinding takes two calls, unload and leaveService. [host main thread; getConnection:
    any thread] */
class EditorLibrary {
public:
    using ServiceGetter = FComponentPtr<IExtensionVSTServiceGetter>;

    /** How the library is bound. kService is also the value before the first binding, and the value
        when there is a service getter but it gives no service: the library file is then loaded, but
        unload neither destroys its connection nor closes it. */
    enum class Binding : int32 { kLibrary = 0, kService = 1 };

    EditorLibrary() = default;
    EditorLibrary(const EditorLibrary&) = delete;
    EditorLibrary& operator=(const EditorLibrary&) = delete;

    /** Binds the service's library, or else loads the library file.
        @param getter the caller's; the caller destroys it at the end of its initialize
        @param hostContext borrowed, may be null
        @param plugin the controller; the service calls its setPluginInfo before this returns
        @return whether there is a connection now */
    bool bind(ServiceGetter& getter, FUnknown* hostContext, IExternalPlugin* plugin);

    /** Stores what the service hands to the controller from inside registerPlugin. The service owns
        both; either may be null. */
    void setPluginInfo(VstIEditorConnect* connect, void* handle);

    /** In library binding, destroys the connection and closes the library. In both bindings,
        forgets them. */
    void unload();

    /** In service binding, unregisters the controller. In both bindings, releases the service; this
        object is then as it was when made. */
    void leaveService(IExternalPlugin* plugin);

    /** The bound library's main object, borrowed, or null. [any thread] */
    VstIEditorConnect* getConnection() const { return connection; }
    Binding getBinding() const { return binding; }

    /** Looks up the entry point that makes observers; null without library or entry point. */
    GetObserver findObserverEntry() const;

private:
    void bindService(ServiceGetter& getter, IExternalPlugin* plugin);
    bool loadLibrary();

    std::atomic<VstIEditorConnect*> connection{nullptr};
    void* libraryHandle = nullptr;
    IPtr<IExtensionVSTService> service;
    Binding binding = Binding::kService;
};

/** The service component's class ID as the host's component factory wants it: 32 upper-case hex
    digits. [any thread] */
std::string serviceComponentID();

} // namespace Vst
} // namespace Steinberg
