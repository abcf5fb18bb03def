// The reference and the path of the macOS bundle.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>

/** The bundle that the host gave last, or null before bundleEntry and after the last bundleExit.
    One reference is held for each bundleEntry that gave it. moduleHandle has the same value. */
extern CFBundleRef ghInst;

/** Size of gPath in bytes, with the terminator. */
constexpr std::size_t kMaxModulePath = 2048;

/** The bundle's path as zero-terminated UTF-8; empty when it is unknown or too long. */
extern char gPath[kMaxModulePath];
