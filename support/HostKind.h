// What kind of host the plug-in is in, by what the host says of itself.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {
namespace Vst {

/** The numbers are fixed: the editor library is told them. */
enum HostKind : int32 {
    kCubaseFamilyHost = 0, ///< knows the extension interfaces
    kStandaloneHost = 1,   ///< the maker's stand-alone host
    kOtherHost = 2
};

/** @param context as the host gave it to initialize; null is another host
    Throws what the host throws. [host main thread] */
HostKind hostKindOf(FUnknown* context);

/** Whether the host's texts are UTF-16; false for a host that does not say. Null and exceptions as
    above. [any thread] */
bool hasUnicode(FUnknown* context);

} // namespace Vst
} // namespace Steinberg
