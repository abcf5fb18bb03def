#include "tools/common/platform/ProcessLoad.h"

#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace Steinberg {
namespace Vst {
namespace tools {

size_t threadCount()
{
    std::error_code error;
    const std::filesystem::directory_iterator tasks("/proc/self/task", error);
    return static_cast<size_t>(std::distance(begin(tasks), end(tasks)));
}

size_t heapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
