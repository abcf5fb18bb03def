#include "tools/common/Interruption.h"

#include <csignal>

namespace Steinberg {
namespace Vst {
namespace tools {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void markInterruption(int /*signal*/)
{
    interrupted = 1;
}

void handle(int signal)
{
    struct sigaction action = {};
    action.sa_handler = markInterruption;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
}

} // namespace

void noticeInterruption()
{
    handle(SIGINT);
    handle(SIGTERM);
}

bool isInterrupted()
{
    return interrupted != 0;
}

} // namespace tools
} // namespace Vst
} // namespace Steinberg
