// The Carbon Event Manager's answer to what kind an event is. Marked as deprecated, whatever
// Apple's header says of it: a call outside platform/mac/CurrentEvent.mm is then a compiler error.
// Known from Apple's Carbon Event Manager reference (CarbonEventsCore.h).
#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueEventRef* EventRef;

UInt32 GetEventKind(EventRef event) __attribute__((deprecated("Carbon has no successor")));

#ifdef __cplusplus
}
#endif
