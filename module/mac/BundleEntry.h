// The macOS bundle's own reference and path.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>

/** The bundle reference that the host handed over last and has not taken back, or null; one
    reference of ours is held for each bundleEntry that gave one. moduleHandle holds the same. */
extern CFBundleRef ghInst;

/** Length of gPath in bytes, its terminator included. */
constexpr std::size_t kMaxModulePath = 2048;

/** The bundle's own path as zero-terminated UTF-8; empty when it is not known or does not fit. */
extern char gPath[kMaxModulePath];
