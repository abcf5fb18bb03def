#include "tests/macos/loader/MacsImage.h"

#include "tests/macos/loader/DarwinCall.h"

#include <csignal>
#include <sys/mman.h>
#include <unistd.h>

// Of the C library: runs the functions that a module gave to __cxa_atexit.
extern "C" void __cxa_finalize(void* module);

namespace macho {
namespace {

struct sigaction before = {};

void handle(int number, siginfo_t* info, void*)
{
    // All of the image can be read, so a fault in it is a write.
    const auto* address = static_cast<const char*>(info->si_addr);
    if (address >= imageBegin && address < imageEnd) {
        constexpr char word[] = "macho: constant data of the image was written\n";
        [[maybe_unused]] const auto written = write(STDERR_FILENO, word, sizeof(word) - 1);
    }
    // The instruction runs again and faults again, with the former handler.
    sigaction(number, &before, nullptr);
}

void protect(char* begin, const char* end, int protection)
{
    if (mprotect(begin, static_cast<size_t>(end - begin), protection) != 0)
        endProgram("a segment does not begin at a page", begin);
}

} // namespace

MacsImage::MacsImage()
{
    protect(imageBegin, imageConstants, PROT_READ | PROT_EXEC);
    protect(imageConstants, imageData, PROT_READ);
    protect(imageData, imageEnd, PROT_READ | PROT_WRITE);
    struct sigaction action = {};
    action.sa_sigaction = &handle;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &before);
    const char* nothing[] = {nullptr};
    for (const auto* each = imageInitialisers; each != imageInitialisersEnd; ++each)
        (*each)(0, nothing, nothing, nothing);
}

MacsImage::~MacsImage()
{
    // The image registered under the address of its header.
    __cxa_finalize(imageBegin);
    struct sigaction current = {};
    sigaction(SIGSEGV, nullptr, &current);
    if ((current.sa_flags & SA_SIGINFO) && current.sa_sigaction == &handle)
        sigaction(SIGSEGV, &before, nullptr);
}

} // namespace macho
