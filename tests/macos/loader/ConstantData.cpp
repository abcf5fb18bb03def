#include "tests/macos/loader/ConstantData.h"

#include <csignal>
#include <cstdint>
#include <unistd.h>

namespace macho {
namespace {

uintptr_t begin = 0;
uintptr_t end = 0;
struct sigaction before = {};

void handle(int number, siginfo_t* info, void*)
{
    // The image can always be read; where it faults it was written.
    const auto address = reinterpret_cast<uintptr_t>(info->si_addr);
    if (address >= begin && address < end) {
        constexpr char word[] = "macho: constant data of the image was written\n";
        [[maybe_unused]] const auto written = write(STDERR_FILENO, word, sizeof(word) - 1);
    }
    // The instruction runs once more, and what would have happened without us happens.
    sigaction(number, &before, nullptr);
}

} // namespace

ConstantData::ConstantData(const void* image, size_t size)
{
    begin = reinterpret_cast<uintptr_t>(image);
    end = begin + size;
    struct sigaction action = {};
    action.sa_sigaction = &handle;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &before);
}

ConstantData::~ConstantData()
{
    struct sigaction current = {};
    sigaction(SIGSEGV, nullptr, &current);
    if ((current.sa_flags & SA_SIGINFO) && current.sa_sigaction == &handle)
        sigaction(SIGSEGV, &before, nullptr);
}

} // namespace macho
