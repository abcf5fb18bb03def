// The kind of host that the plug-in runs in, by the host's name and interfaces.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {
namespace Vst {

/** The numbers are fixed: VstIEditorConnect::setHostType gives them to the editor library. */
enum HostKind : int32 {
    kCubaseFamilyHost = 0, ///< knows the extension interfaces
    kStandaloneHost = 1,   ///< the maker's stand-alone host
    kOtherHost = 2
};

/** @param context the host's context, as given to initialize; for null the result is kOtherHost
    Throws what the host throws. [any thread] */
HostKind hostKindOf(FUnknown* context);

/** Whether the host's texts are UTF-16; false for null and for a host that does not say.
    Throws what the host throws. [any thread] */
bool hasUnicode(FUnknown* context);

} // namespace Vst
} // namespace Steinberg
