// The macOS bundle's own reference.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

/** The bundle reference that the host handed over last and has not taken back, or null; one
    reference of ours is held for each bundleEntry that gave one. moduleHandle holds the same. */
extern CFBundleRef ghInst;
