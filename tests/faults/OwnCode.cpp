#include "tests/faults/OwnCode.h"

#include <algorithm>
#include <cstring>
#include <link.h>
#include <unwind.h>

namespace faults {
namespace {

struct Range {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool holds(std::uintptr_t address) const { return address >= begin && address < end; }
};

constexpr size_t kMostModules = 3;

Range own[kMostModules];
size_t modules = 0;
Range runtime;

bool isOwn(std::uintptr_t address)
{
    return std::any_of(own, own + modules,
                       [address](const Range& range) { return range.holds(address); });
}

struct Search {
    const char* namePart;
    Range* found;
};

int look(dl_phdr_info* info, size_t, void* argument)
{
    auto& search = *static_cast<Search*>(argument);
    if (!info->dlpi_name || !std::strstr(info->dlpi_name, search.namePart))
        return 0;
    for (int index = 0; index < info->dlpi_phnum; ++index) {
        const auto& header = info->dlpi_phdr[index];
        if (header.p_type != PT_LOAD || (header.p_flags & PF_X) == 0)
            continue;
        const std::uintptr_t begin = info->dlpi_addr + header.p_vaddr;
        if (search.found->begin == 0)
            search.found->begin = begin;
        search.found->end = begin + header.p_memsz;
    }
    return 1;
}

struct Walk {
    std::uintptr_t from;
    bool reached = false;
    bool isOwn = false;
};

_Unwind_Reason_Code visit(_Unwind_Context* context, void* argument)
{
    auto& walk = *static_cast<Walk*>(argument);
    const std::uintptr_t address = _Unwind_GetIP(context);
    walk.reached = walk.reached || address == walk.from;
    if (!walk.reached || runtime.holds(address))
        return _URC_NO_REASON;
    walk.isOwn = isOwn(address);
    return _URC_END_OF_STACK;
}

} // namespace

void learnOwnCode(const char* moduleFile)
{
    const char* name = std::strrchr(moduleFile, '/');
    if (modules == kMostModules)
        return;
    Search module{name ? name : moduleFile, &own[modules]};
    ++modules;
    dl_iterate_phdr(look, &module);
    Search cxx{"/libstdc++.so", &runtime};
    dl_iterate_phdr(look, &cxx);
}

bool isOwnCode(std::uintptr_t address)
{
    return isOwn(address);
}

bool isCalledByOwnCode(std::uintptr_t returnAddress)
{
    if (isOwn(returnAddress))
        return true;
    if (!runtime.holds(returnAddress))
        return false;
    Walk walk{returnAddress};
    _Unwind_Backtrace(visit, &walk);
    return walk.isOwn;
}

} // namespace faults
