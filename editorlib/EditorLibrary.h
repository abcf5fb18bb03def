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

/** The controller's hold on the library. Bound in one of two ways: a host-side service hands over a
    connection and a handle that stay its own, or the library file is loaded and ended by us.

    Unbinding is three calls, because the controller has other things to undo between them.
    [host main thread]; getConnection also from any library thread. */
class EditorLibrary {
public:
    using ServiceGetter = FComponentPtr<IExtensionVSTServiceGetter>;

    /** Which way the library is bound. Service is also the state before the first binding, and it
        stays when a service getter has no service to give: such a library is then loaded by us and
        yet neither ended nor closed. */
    enum class Binding : int32 { kLibrary = 0, kService = 1 };

    EditorLibrary() = default;
    EditorLibrary(const EditorLibrary&) = delete;
    EditorLibrary& operator=(const EditorLibrary&) = delete;

    /** Binds by service, else by file.
        @param getter the caller's, which ends it when it has finished initialising
        @param hostContext borrowed, may be null
        @param plugin the controller; the service calls its setPluginInfo before this returns
        @return whether a connection is held now; without one the controller stays unbound */
    bool bind(ServiceGetter& getter, FUnknown* hostContext, IExternalPlugin* plugin);

    /** What the service hands over through the controller, from inside registerPlugin. Both
        stay the service's; either may be null. */
    void setPluginInfo(VstIEditorConnect* connect, void* handle);

    /** In library binding, ends the connection and closes the library; forgets both in any case. */
    void unload();

    /** In service binding, signs the controller off; lets go of the service in any case, after
        which this object is as new. */
    void leaveService(IExternalPlugin* plugin);

    VstIEditorConnect* getConnection() const { return connection; }
    Binding getBinding() const { return binding; }

    /** The observer entry point, looked up anew; null without library or entry point. */
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
