// HostAndLibrary: the host's objects and the editor library, as the controller's parts use them.
#pragma once

#include "basics/CallGuard.h"
#include "controller/SharedReference.h"
#include "editorlib/EditorLibrary.h"
#include "support/HostKind.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

namespace Steinberg {
namespace Vst {

/** All of it can change while the controller lives: get what you need at each use, and keep none
    of it. */
struct HostAndLibrary {
    /** The host's context, as given to initialize; null before that and after terminate.
        [any thread] */
    SharedReference<FUnknown> hostContext;
    /** The component handler that the host set; null before that and after terminate.
        [any thread] */
    SharedReference<IComponentHandler> componentHandler;
    EditorLibrary library;

    // Both ask the host at each call. A host that throws counts as kOtherHost, without Unicode.
    // [any thread]
    bool isUnicodeHost() const noexcept
    {
        return guarded(false, [this] { return hasUnicode(hostContext.get()); });
    }
    HostKind getHostKind() const noexcept
    {
        return guarded(kOtherHost, [this] { return hostKindOf(hostContext.get()); });
    }
};

} // namespace Vst
} // namespace Steinberg
