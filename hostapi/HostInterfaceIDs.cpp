#include "hostapi/IBusDescriptor.h"
#include "hostapi/IComponentFactory.h"
#include "hostapi/IComponentPortHandler.h"
#include "hostapi/IConnector.h"
#include "hostapi/IDevice.h"
#include "hostapi/IDeviceList.h"
#include "hostapi/IExternalEffectUsingSKI.h"
#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "hostapi/IHostClasses.h"
#include "hostapi/IHostPort.h"
#include "hostapi/IPortRegistry.h"
#include "hostapi/IValue.h"

namespace Steinberg {

DEF_CLASS_IID(IHostClasses)
DEF_CLASS_IID(IComponentFactory)
DEF_CLASS_IID(IHostApplicationW)
DEF_CLASS_IID(IHostApplicationA)
DEF_CLASS_IID(IPortRegistry)
DEF_CLASS_IID(IHostPort)
DEF_CLASS_IID(IComponentPortHandler)
DEF_CLASS_IID(IBusDescriptor)
DEF_CLASS_IID(IDeviceList)
DEF_CLASS_IID(IDevice)
DEF_CLASS_IID(IValue)
DEF_CLASS_IID(IConnector)
DEF_CLASS_IID(Vst::IExternalEffectUsingSKI)

} // namespace Steinberg
