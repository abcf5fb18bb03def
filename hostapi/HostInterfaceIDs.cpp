#include "hostapi/HostInterfaces.h"
#include "hostapi/IExternalEffectUsingSKI.h"

namespace Steinberg {

#define VSTK2X_DEFINE(Interface, ...) DEF_CLASS_IID(Interface)
VSTK2X_HOST_INTERFACES(VSTK2X_DEFINE)
DEF_CLASS_IID(Vst::IExternalEffectUsingSKI)

} // namespace Steinberg
