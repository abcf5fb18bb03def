// HostAndLibrary: the two sides that the controller stands between, as its collaborators see them.
#pragma once

#include "basics/CallGuard.h"
#include "controller/SharedReference.h"
#include "editorlib/EditorLibrary.h"
#include "support/HostKind.h"

#include "pluginterfaces/vst/ivsteditcontroller.h"

namespace Steinberg {
namespace Vst {

/** Everything in it changes over the controller's life, so collaborators ask at each use and keep
    nothing. */
struct HostAndLibrary {
    /** The host's context of initialize; null before it and after terminate. [any thread] */
    SharedReference<FUnknown> hostContext;
    /** The component handler that the host set; null before it and after terminate. [any thread] */
    SharedReference<IComponentHandler> componentHandler;
    EditorLibrary library;

    // Both ask the host each time. One that throws is another host, without Unicode. [any thread]
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
