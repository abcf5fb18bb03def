// scan-module FILE: does with a plug-in module what a host's scan does, and prints the nanoseconds
// of processor time that it took. A program of its own, so that every scan is a process's first. It
// needs nothing of the C++ library, so that it can be linked with and without it.
#include "pluginterfaces/base/ipluginbase.h"

#include <cstdio>
#include <ctime>
#include <dlfcn.h>

namespace {

using namespace Steinberg;

using EntryFunction = bool (*)(void*);
using ExitFunction = bool (*)();

bool readClasses(IPluginFactory& factory)
{
    void* object = nullptr;
    if (factory.queryInterface(IPluginFactory2_iid, &object) != kResultOk)
        return false;
    auto* second = static_cast<IPluginFactory2*>(object);
    bool all = second->countClasses() == 2;
    PClassInfo2 info;
    for (int32 index = 0; index < 2; ++index)
        all = second->getClassInfo2(index, &info) == kResultOk && all;
    second->release();
    return all;
}

bool scan(const char* file)
{
    void* module = dlopen(file, RTLD_LAZY);
    if (!module)
        return false;
    const auto enter = reinterpret_cast<EntryFunction>(dlsym(module, "ModuleEntry"));
    const auto leave = reinterpret_cast<ExitFunction>(dlsym(module, "ModuleExit"));
    const auto getFactory = reinterpret_cast<GetFactoryProc>(dlsym(module, "GetPluginFactory"));
    if (!enter || !leave || !getFactory || !enter(module))
        return false;
    IPluginFactory* factory = getFactory();
    const bool all = factory && readClasses(*factory);
    if (factory)
        factory->release();
    return leave() && dlclose(module) == 0 && all;
}

long long now()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

} // namespace

int main(int argc, char** argv)
{
    const long long start = now();
    if (argc != 2 || !scan(argv[1]))
        return 1;
    std::printf("%lld\n", now() - start);
    return 0;
}
