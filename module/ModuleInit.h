// The module's handle, and the two functions that every platform's entry points call.
#pragma once

/** The module as the host loaded it: the bundle reference on macOS, the shared library's handle on
    Linux. Set by the platform's entry point; null when the host gave none. */
extern void* moduleHandle;

/** Called at every entry and exit. There is nothing to set up: always true. [host main thread] */
bool InitModule();
bool DeinitModule();
