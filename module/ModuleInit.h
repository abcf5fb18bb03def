// The module's globals and the two hooks that every platform's entry points call.
#pragma once

#include <cstddef>

/** Length of gPath in bytes, its terminator included. */
constexpr std::size_t kMaxModulePath = 2048;

/** What the host loaded: the bundle reference on macOS, the shared library's handle on Linux. Set
   by the platform's entry point, null when the host gave none. */
extern void* moduleHandle;

/** The bundle's own path as zero-terminated UTF-8; empty when it is not known or does not fit. */
extern char gPath[kMaxModulePath];

/** Called at every entry and exit; always true, there is nothing to set up. [host main thread] */
bool InitModule();
bool DeinitModule();
