// The Carbon Event Manager's answer to what kind an event is.
#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueEventRef* EventRef;

UInt32 GetEventKind(EventRef event);

#ifdef __cplusplus
}
#endif
