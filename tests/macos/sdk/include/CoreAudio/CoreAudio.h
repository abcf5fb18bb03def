// Core Audio's clock, which the SDK's system time is made of. Known from Apple's reference
// (HostTime.h).
#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

UInt64 AudioGetCurrentHostTime(void);
UInt64 AudioConvertHostTimeToNanos(UInt64 hostTime);

#ifdef __cplusplus
}
#endif
