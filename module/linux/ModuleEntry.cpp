// The entry points that a Linux host calls after loading and before unloading the module.
#include "module/ModuleInit.h"
#include "pluginterfaces/base/fplatform.h"

extern "C" {

/** @param handle the host's handle of this shared library; may be null. Hosts may call this several
    times, each with its own ModuleExit. [host main thread] */
SMTG_EXPORT_SYMBOL bool ModuleEntry(void* handle);
SMTG_EXPORT_SYMBOL bool ModuleExit();
}

bool ModuleEntry(void* handle)
{
    // No reference to take: the loader itself counts who has the library open.
    if (handle)
        moduleHandle = handle;
    return InitModule();
}

bool ModuleExit()
{
    return DeinitModule();
}
