#include "tests/realtime/SystemCalls.h"

#include <csignal>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/** The operation is between two calls with this argument, which nobody else passes. */
constexpr long kMark = 0x5EED5EED;

void mark()
{
    syscall(SYS_getpgid, kMark);
}

[[noreturn]] void runTraced(const std::function<void()>& operation)
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(1);
    raise(SIGSTOP);
    mark();
    operation();
    mark();
    _exit(0);
}

class Tracer {
public:
    explicit Tracer(pid_t tracedProcess)
    : traced(tracedProcess)
    {
    }

    bool run()
    {
        if (waitpid(traced, &status, 0) != traced || !WIFSTOPPED(status))
            return false;
        constexpr auto options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
        if (ptrace(PTRACE_SETOPTIONS, traced, nullptr, options) != 0)
            return false;
        while (goOn() && !WIFEXITED(status) && !WIFSIGNALED(status))
            look();
        return WIFEXITED(status) && WEXITSTATUS(status) == 0 && marks == 2;
    }

    const std::vector<long>& getCalls() const { return calls; }

private:
    bool goOn()
    {
        return ptrace(PTRACE_SYSCALL, traced, nullptr, signalToDeliver) == 0 &&
               waitpid(traced, &status, 0) == traced;
    }

    void look()
    {
        const bool isCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
        signalToDeliver = isCall ? 0 : WSTOPSIG(status);
        __ptrace_syscall_info info = {};
        if (!isCall || ptrace(PTRACE_GET_SYSCALL_INFO, traced, sizeof(info), &info) <= 0 ||
            info.op != PTRACE_SYSCALL_INFO_ENTRY)
            return;
        const auto number = static_cast<long>(info.entry.nr);
        if (number == SYS_getpgid && info.entry.args[0] == kMark)
            ++marks;
        else if (marks == 1)
            calls.push_back(number);
    }

    const pid_t traced;
    int status = 0;
    int signalToDeliver = 0;
    int marks = 0;
    std::vector<long> calls;
};

} // namespace

std::optional<std::vector<long>> doubles::systemCallsOf(const std::function<void()>& operation)
{
    const pid_t child = fork();
    if (child == 0)
        runTraced(operation);
    if (child < 0)
        return std::nullopt;
    Tracer tracer(child);
    if (tracer.run())
        return tracer.getCalls();
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    return std::nullopt;
}
