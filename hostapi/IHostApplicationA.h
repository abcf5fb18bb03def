// IHostApplicationA: marks an older host of the Cubase family, without Unicode. Only whether the
// host has it matters; nothing of it is called.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

/** [any thread on which the host's kind is asked for] */
class IHostApplicationA : public FUnknown {
public:
    static const FUID iid;
};

} // namespace Steinberg
