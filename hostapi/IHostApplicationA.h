// IHostApplicationA: marks an older host of the Cubase family, without Unicode.
// Only its presence counts; nothing of it is called.
#pragma once

#include "hostapi/HostInterfaceIDs.h"

namespace Steinberg {

class IHostApplicationA : public FUnknown {
public:
    static const FUID iid;
};

} // namespace Steinberg
