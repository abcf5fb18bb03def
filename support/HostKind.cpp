#include "support/HostKind.h"

#include "hostapi/IHostApplicationA.h"
#include "hostapi/IHostApplicationW.h"
#include "support/CharacterConvert.h"
#include "support/DAWInfo.h"

namespace Steinberg {
namespace Vst {

namespace {
constexpr const char* kStandaloneHostName = "Standalone";
} // namespace

HostKind hostKindOf(FUnknown* context)
{
    if (!context)
        return kOtherHost;
    const FUnknownPtr<IHostApplicationW> application(context);
    if (!application) {
        const FUnknownPtr<IHostApplicationA> older(context);
        return older ? kCubaseFamilyHost : kOtherHost;
    }
    const DAWInfo info(application);
    if (info.getHostType() != DAWInfo::kUnknownHost)
        return kCubaseFamilyHost;
    const CharacterConvert name(application->getApplicationName(),
                                application->getCharacterSet() == kResultOk);
    return name.getStdString() == kStandaloneHostName ? kStandaloneHost : kOtherHost;
}

bool hasUnicode(FUnknown* context)
{
    const FUnknownPtr<IHostApplicationW> application(context);
    return application && application->getCharacterSet() == kResultOk;
}

} // namespace Vst
} // namespace Steinberg
