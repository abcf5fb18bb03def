#include "tests/doubles/MacsCode.h"

#include <dlfcn.h>

#ifndef VSTK2X_MACHO
const MachoSystem* doubles::macSystem()
{
    return nullptr;
}
#else
const MachoSystem* doubles::macSystem()
{
    void* module = dlopen(VSTK2X_MACHO, RTLD_LAZY | RTLD_NOLOAD);
    if (!module)
        return nullptr;
    const auto get = reinterpret_cast<GetMachoSystem>(dlsym(module, "getMachoSystem"));
    const auto* system = get ? get() : nullptr;
    dlclose(module); // its user holds it
    return system;
}
#endif
