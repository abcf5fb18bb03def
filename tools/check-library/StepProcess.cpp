#include "tools/check-library/StepProcess.h"

#include "tools/check-library/Journal.h"
#include "tools/check-library/Steps.h"
#include "tools/common/Failure.h"
#include "tools/common/platform/ProgramFile.h"
#include "tools/common/VoiceWalk.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

// NOLINTNEXTLINE(readability-redundant-declaration): not every system's headers have it
extern char** environ;

namespace Steinberg {
namespace Vst {
namespace checklibrary {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr double kCallsAStep = 10; ///< as many time limits as a whole step may take

/** A pipe whose ends other processes do not inherit. */
class Pipe {
public:
    Pipe()
    {
        if (pipe(ends.data()) != 0)
            throw tools::Failure(std::string("No pipe to another process: ") +
                                 std::strerror(errno) + ".");
        for (const int end : ends)
            fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(reading(), F_SETFL, O_NONBLOCK);
    }
    ~Pipe()
    {
        closeWriting();
        closeReading();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int reading() const { return ends[0]; }
    int writing() const { return ends[1]; }
    void closeReading() { closeEnd(ends[0]); }
    void closeWriting() { closeEnd(ends[1]); }

    /** Appends what the other process has written. @return whether that is anything */
    bool readInto(std::string& text)
    {
        std::array<char, 4096> buffer{};
        const auto count = read(reading(), buffer.data(), buffer.size());
        if (count > 0)
            text.append(buffer.data(), static_cast<size_t>(count));
        if (count == 0)
            closeReading();
        return count > 0;
    }

private:
    static void closeEnd(int& end)
    {
        if (end >= 0)
            close(std::exchange(end, -1));
    }

    std::array<int, 2> ends{-1, -1};
};

/** Reads what a Journal wrote. */
class JournalReader {
public:
    void read(std::string& text)
    {
        size_t begin = 0;
        for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
            take(text.substr(begin, end - begin));
            begin = end + 1;
        }
        text.erase(0, begin);
    }

    std::vector<Finding> findings;
    bool isDone = false;

    /** Where the process is, with all calls that are under way: "in start()". */
    std::string place() const
    {
        std::string text;
        for (const auto& call : calls)
            if (text.find(call.second) == std::string::npos)
                text += (text.empty() ? "in " : " and in ") + call.second;
        if (!text.empty())
            return text;
        if (isDone)
            return "after its end, while the program ends";
        return last.empty() ? "before anything was asked of it"
                            : "outside of every call, on a thread of its own, after " + last;
    }

    /** The call that place names first; empty when none is under way. */
    std::string call() const { return calls.empty() ? std::string() : calls.begin()->second; }

private:
    void take(const std::string& line)
    {
        if (line.empty())
            return;
        const auto rest = line.substr(1);
        const auto thread = rest.substr(0, rest.find(' '));
        switch (line.front()) {
        case Journal::kEntered:
            calls[thread] = last = rest.substr(thread.size() + 1);
            break;
        case Journal::kLeft:
            calls.erase(thread);
            break;
        case Journal::kFinding:
            findings.push_back(findingOf(nlohmann::ordered_json::parse(rest)));
            break;
        case Journal::kDone:
            isDone = true;
            break;
        default:
            break;
        }
    }

    std::map<std::string, std::string> calls; ///< under way, by thread
    std::string last;
};

class StepProcess {
public:
    StepProcess(const Step& newStep, const Options& newOptions)
    : step(newStep)
    , options(newOptions)
    {
        start();
    }
    ~StepProcess() { wait(); }
    StepProcess(const StepProcess&) = delete;
    StepProcess& operator=(const StepProcess&) = delete;

    std::vector<Finding> run()
    {
        follow();
        const int status = wait();
        if (isOverdue)
            add("hang", saysOverdue());
        else if (WIFSIGNALED(status))
            add("crash", std::string(" crashes ") + journal.place() + ": " +
                             strsignal(WTERMSIG(status)) + ".");
        else if (!journal.isDone || WEXITSTATUS(status) != 0)
            add("exit", " ends the program " + journal.place() + ", with status " +
                            std::to_string(WEXITSTATUS(status)) + ".");
        return std::move(journal.findings);
    }

private:
    void start()
    {
        std::vector<std::string> words = {tools::programFile(), std::string("--step=") + step.name,
                                          "--library=" + options.library,
                                          "--plugin=" + options.plugIn,
                                          "--time-limit=" + std::to_string(options.timeLimit)};
        if (options.strict)
            words.emplace_back("--strict");
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (auto& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);

        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, report.writing(), STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, prints.writing(), STDERR_FILENO);
        const int error =
            posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0)
            throw tools::Failure("The system starts no process of \"" + words[0] +
                                 "\": " + std::strerror(error) + ".");
        report.closeWriting();
        prints.closeWriting();
    }

    /** Reads until the process closes its report, or takes too long for one call or in all. */
    void follow()
    {
        const auto call = std::chrono::duration_cast<Clock::duration>(Seconds(options.timeLimit));
        const auto started = Clock::now();
        auto heard = started;
        std::string text;
        while (report.reading() >= 0) {
            const auto due = std::min(heard + call, started + call * int(kCallsAStep));
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now()).count();
            if (left <= 0) {
                isOverdue = true;
                isSlow = heard + call > due;
                kill(process, SIGKILL);
                break;
            }
            pollfd ends[] = {{report.reading(), POLLIN, 0}, {prints.reading(), POLLIN, 0}};
            poll(ends, 2, static_cast<int>(left) + 1);
            if (ends[1].revents != 0)
                prints.readInto(printed);
            if (ends[0].revents != 0 && report.readInto(text)) {
                heard = Clock::now();
                journal.read(text);
            }
        }
        while (prints.reading() >= 0 && prints.readInto(printed)) {
        }
    }

    /** Waits for the end of the process, and ends one that goes on after it closed its report.
        @return waitpid's status */
    int wait()
    {
        if (process <= 0)
            return 0;
        int status = 0;
        const auto due = Clock::now() + Seconds(options.timeLimit);
        while (waitpid(process, &status, WNOHANG) == 0) {
            if (Clock::now() > due) {
                isOverdue = true;
                kill(process, SIGKILL);
                waitpid(process, &status, 0);
                break;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        process = 0;
        return status;
    }

    std::string saysOverdue() const
    {
        char seconds[32];
        std::snprintf(seconds, sizeof(seconds), "%g",
                      options.timeLimit * (isSlow ? kCallsAStep : 1));
        return isSlow ? std::string(" takes more than ") + seconds +
                            " seconds for one step; it was cut off " + journal.place() + "."
                      : " does not come back within " + std::string(seconds) +
                            " seconds: it hangs " + journal.place() + ".";
    }

    void add(const char* kind, const std::string& predicate)
    {
        journal.findings.push_back(bad(step.name, step.subject + predicate + lastWords(),
                                       step.remedy, {{"ended", kind}, {"call", journal.call()}}));
    }

    /** The last line that it printed, which often comes from the system's loader. */
    std::string lastWords() const
    {
        const auto end = printed.find_last_not_of("\n ");
        if (end == std::string::npos)
            return {};
        const auto begin = printed.rfind('\n', end);
        return " It said: \"" + tools::printable(printed.substr(begin + 1, end - begin)) + "\"";
    }

    const Step& step;
    const Options& options;
    Pipe report;
    Pipe prints;
    pid_t process = 0;
    JournalReader journal;
    std::string printed;
    bool isOverdue = false;
    bool isSlow = false; ///< no call took too long, but all of them together
};

} // namespace

std::vector<Finding> runStep(const Step& step, const Options& options)
{
    return StepProcess(step, options).run();
}

void takeStep(const Options& options)
{
    const int report = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    // Ends this process even when the one that waits for it is gone.
    alarm(static_cast<unsigned>(std::ceil(options.timeLimit * (kCallsAStep + 2))));

    const auto& step = stepNamed(options.step);
    Journal journal(report);
    try {
        step.run(options, journal);
    } catch (const tools::Failure& failure) {
        journal.say(bad(step.name, failure.what(), step.remedy));
    }
    journal.done();
}

} // namespace checklibrary
} // namespace Vst
} // namespace Steinberg
