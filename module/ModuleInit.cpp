#include "module/ModuleInit.h"

void* moduleHandle = nullptr;

bool InitModule()
{
    return true;
}

bool DeinitModule()
{
    return true;
}
