#include "tools/common/platform/ProcessLoad.h"

#include <mach/mach.h>
#include <malloc/malloc.h>

namespace Steinberg {
namespace Vst {
namespace tools {

size_t threadCount()
{
    thread_act_array_t threads = nullptr;
    mach_msg_type_number_t count = 0;
    if (task_threads(mach_task_self(), &threads, &count) != KERN_SUCCESS)
        return 0;
    for (mach_msg_type_number_t index = 0; index < count; ++index)
        mach_port_deallocate(mach_task_self(), threads[index]);
    vm_deallocate(mach_task_self(), reinterpret_cast<vm_address_t>(threads),
                  count * sizeof(*threads));
    return count;
}

size_t heapInUse()
{
    malloc_statistics_t statistics = {};
    malloc_zone_statistics(nullptr, &statistics); // of all zones
    return statistics.size_in_use;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
