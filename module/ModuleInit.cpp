#include "module/ModuleInit.h"

void* moduleHandle = nullptr;
char gPath[kMaxModulePath] = {};

bool InitModule()
{
    return true;
}

bool DeinitModule()
{
    return true;
}
