// Host: the whole host that play pretends to be.
#pragma once

#include "tools/common/LibraryHandle.h"
#include "tools/host/ComponentHandler.h"
#include "tools/host/EditorService.h"
#include "tools/host/HostContext.h"
#include "tools/host/studio/Studio.h"
#include "tools/play/Options.h"

#include <memory>
#include <string>

namespace Steinberg {
namespace Vst {
namespace play {

/** Outlives the plug-in's module and every instance. */
class Host {
public:
    /** @throws Failure for an unknown host family, a service without editor library, or a project
        that cannot be read */
    explicit Host(const Options& options);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    FUnknown& context() { return *hostContext; }
    RunLoop& runLoop() { return *loop; }
    ComponentHandler& handler() { return *componentHandler; }
    const HostFamily& family() const { return hostFamily; }

    /** Null in a host without such objects. */
    Studio* studio() { return hostStudio.get(); }

    /** Tells a plug-in that is connected that ports can be connected from now on, where the host
        has ports and the plug-in wants to know. */
    void announcePorts(IEditController& controller);

    /** How a plug-in that has just initialized got its editor library, for people. */
    std::string binding() const;

    /** The file of the editor library that plug-ins of this host use. */
    const std::string& libraryPath() const { return usedLibrary; }

private:
    void offerService(const Options& options, HostClasses& hostClasses);

    HostFamily hostFamily;
    std::string usedLibrary;
    tools::LibraryHandle library; ///< before the service, which ends its connections
    std::unique_ptr<Studio> hostStudio;
    IPtr<EditorService> service;
    IPtr<RunLoop> loop;
    IPtr<ComponentHandler> componentHandler;
    std::unique_ptr<HostContext> hostContext;
};

} // namespace play
} // namespace Vst
} // namespace Steinberg
