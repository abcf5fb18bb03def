#include "tools/check-library/Journal.h"

#include <atomic>
#include <cerrno>
#include <unistd.h>

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

/** 1 for the first thread that asks, which is the step's own. */
std::string threadNumber()
{
    static std::atomic<int> last{0};
    thread_local const int own = ++last;
    return std::to_string(own);
}

} // namespace

void Journal::enter(const std::string& call)
{
    write(kEntered + threadNumber() + " " + call);
}

void Journal::leave()
{
    write(kLeft + threadNumber());
}

void Journal::say(const Finding& finding)
{
    write(kFinding +
          jsonOf(finding).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

void Journal::done()
{
    write(std::string(1, kDone));
}

void Journal::write(const std::string& line)
{
    if (descriptor < 0)
        return;
    const auto whole = line + "\n";
    const std::lock_guard<std::mutex> guard(mutex);
    for (size_t written = 0; written < whole.size();) {
        const auto count = ::write(descriptor, whole.data() + written, whole.size() - written);
        if (count < 0 && errno != EINTR)
            return; // nobody reads it any more
        written += count > 0 ? static_cast<size_t>(count) : 0;
    }
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
