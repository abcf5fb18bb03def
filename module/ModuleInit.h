// The module's globals and the two hooks that every platform's entry points call.
#pragma once

/** What the host loaded: the bundle reference on macOS, the shared library's handle on Linux. Set
    by the platform's entry point, null when the host gave none. */
extern void* moduleHandle;

/** Called at every entry and exit; always true, there is nothing to set up. [host main thread] */
bool InitModule();
bool DeinitModule();
