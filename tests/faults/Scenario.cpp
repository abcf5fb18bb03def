#include "tests/faults/Scenario.h"

#include "tests/doubles/Sanitized.h"
#include "tests/faults/FaultCount.h"
#include "tests/faults/HostBlock.h"
#include "tests/faults/SystemFaults.h"

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace faults {
namespace {

using testing::IsEmpty;

constexpr Kind kKinds[] = {Kind::kHostAnswers,    Kind::kHostThrows,    Kind::kHostNonsense,
                           Kind::kLibraryAnswers, Kind::kLibraryThrows, Kind::kLibraryNonsense,
                           Kind::kShortTransfer,  Kind::kNoMemory,      Kind::kFileCall};

bool isNonsense(Kind kind)
{
    return kind == Kind::kHostNonsense || kind == Kind::kLibraryNonsense;
}

constexpr unsigned kHangSeconds = 60;
constexpr int kMaxBadRuns = 3;

/** Tells which fault ended the program, or made it hang. */
char underWay[200];

void tellAndEnd(int signal)
{
    const auto ignored = write(STDERR_FILENO, underWay, std::strlen(underWay));
    static_cast<void>(ignored);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watch(const char* name, const Fault& fault)
{
    std::snprintf(underWay, sizeof(underWay), "\nduring %s: %s, call %zu\n", name,
                  kindName(fault.kind), fault.call);
    static const bool installed = [] {
        std::signal(SIGABRT, tellAndEnd);
        std::signal(SIGALRM, tellAndEnd);
#ifndef VSTK2X_SANITIZED // which tells more
        std::signal(SIGSEGV, tellAndEnd);
#endif
        return true;
    }();
    static_cast<void>(installed);
    alarm(kHangSeconds);
}

void arm(World& world, const Fault& fault)
{
    const auto at = [&](Kind kind) { return fault.kind == kind ? fault.call : 0; };
    world.host.failAtCall(at(Kind::kHostAnswers));
    if (fault.kind == Kind::kHostThrows)
        world.host.throwAtCall(fault.call);
    if (fault.kind == Kind::kHostNonsense)
        world.host.talkNonsenseAtCall(fault.call);
    world.library.failAtCall(at(Kind::kLibraryAnswers));
    if (fault.kind == Kind::kLibraryThrows)
        world.library.throwAtCall(fault.call);
    if (fault.kind == Kind::kLibraryNonsense)
        world.library.talkNonsenseAtCall(fault.call);
    HostStream::transfers = 0;
    HostStream::shortTransfer = at(Kind::kShortTransfer);
    if (fault.kind == Kind::kNoMemory)
        SystemFaults::failMemoryAt(fault.call);
    if (fault.kind == Kind::kFileCall)
        SystemFaults::failFilesAt(fault.call);
}

/** @return whether there were as many calls; the fault then knows which one failed */
bool disarm(World& world, Fault& fault)
{
    SystemFaults::clear();
    const size_t hostCalls = world.host.callCount();
    const size_t libraryCalls = world.library.callCount();
    const size_t counts[] = {hostCalls,
                             hostCalls,
                             hostCalls,
                             libraryCalls,
                             libraryCalls,
                             libraryCalls,
                             HostStream::transfers,
                             SystemFaults::memoryCalls(),
                             SystemFaults::fileCalls()};
    fault.isTold = world.host.nonsenseTold() || world.library.nonsenseTold();
    fault.text = world.host.faultyText() + world.library.faultyText();
    HostStream::shortTransfer = 0;
    world.host.clearFaults();
    world.library.clearFaults();
    return fault.call > 0 && counts[static_cast<size_t>(fault.kind)] >= fault.call;
}

/** What only the host could end, and did not. */
void expectBalanced(World& world, const Fault& fault)
{
    auto left = world.host.ledger();
    const auto mayRemain = [&](const std::string& beginning) {
        left.erase(std::remove_if(left.begin(), left.end(),
                                  [&](const std::string& line) {
                                      return line.compare(0, beginning.size(), beginning) == 0;
                                  }),
                   left.end());
    };
    if (fault.hit("destroyComponent"))
        mayRemain("component(");
    if (fault.hit("unregisterTimer"))
        mayRemain("timers: ");
    // Without the update handler a dependent cannot be taken back.
    if (fault.hit("IHostClasses") || fault.hit("IUpdateHandler") || fault.hit("removeDependent"))
        mayRemain("dependents of ");
    EXPECT_THAT(left, IsEmpty());
    auto complaints = world.library.complaints();
    if (fault.hit("removeObserver"))
        complaints.clear(); // the library kept one that it was asked to let go
    EXPECT_THAT(complaints, IsEmpty());
}

size_t openFiles()
{
    using Iterator = std::filesystem::directory_iterator;
    return static_cast<size_t>(std::distance(Iterator("/proc/self/fd"), Iterator()));
}

/** Calls about the parts 2 to 15 are those about part 1 with other IDs: parameter IDs end with the
    part's index, and the fault is tried at the first part, the last and the edit flag. With
    FAULTS_AT_EVERY_PART set it is tried everywhere. */
bool isRepetition(const std::string& text)
{
    static const bool everywhere = std::getenv("FAULTS_AT_EVERY_PART") != nullptr;
    size_t at = text.find('(');
    if (everywhere || at == std::string::npos)
        return false;
    const size_t begin = at + 1;
    size_t end = begin;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])))
        ++end;
    if (end - begin < 8)
        return false;
    const int part = std::atoi(text.substr(end - 3, 3).c_str());
    return part >= 1 && part <= 14;
}

/** Which of the library's calls and of the plug-in's allocations in an act are repetitions. An
    allocation belongs to the library's call before it. */
class Repetitions {
public:
    explicit Repetitions(const MakeScenario& make)
    {
        const auto scenario = make();
        scenario->setUp();
        auto& library = scenario->world.library;
        const auto before = library.onCall;
        library.onCall = [&](const std::string& text) {
            if (before)
                before(text);
            allocations.resize(SystemFaults::memoryCalls(), isRepeated);
            isRepeated = isRepetition(text);
            calls.push_back(isRepeated);
        };
        SystemFaults::failMemoryAt(0);
        scenario->act();
        SystemFaults::clear();
        library.onCall = before;
        scenario->tearDown();
    }

    bool holds(Kind kind, size_t call) const
    {
        if (kind == Kind::kLibraryAnswers || kind == Kind::kLibraryThrows ||
            kind == Kind::kLibraryNonsense)
            return call <= calls.size() && calls[call - 1];
        return kind == Kind::kNoMemory && call <= allocations.size() && allocations[call - 1];
    }

private:
    bool isRepeated = false;
    std::vector<bool> calls;
    std::vector<bool> allocations;
};

int failures()
{
    return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
}

/** @return whether the fault came about */
bool runScenario(Scenario& scenario, Fault& fault)
{
    World& world = scenario.world;
    scenario.setUp();
    arm(world, fault);
    scenario.act();
    const bool happened = disarm(world, fault);
    SCOPED_TRACE(fault.text);
    if (happened && !isNonsense(fault.kind))
        scenario.expectStated(fault);
    scenario.act();
    scenario.expectDone();
    scenario.tearDown();
    expectBalanced(world, fault);
    scenario.expectEnded(fault);
    world.host.runLoop.forgetTimers();
    world.host.updates.forgetDependents();
    return happened;
}

/** The same, and nothing is left of it. */
bool run(const char* name, const MakeScenario& make, Fault fault)
{
    SCOPED_TRACE(std::string(kindName(fault.kind)) + " at call " + std::to_string(fault.call));
    watch(name, fault);
    fault.text.reserve(200); // so that its memory is not taken for the plug-in's
    const int failuresBefore = failures();
    const long objects = SystemFaults::liveObjects();
    const size_t files = openFiles();
    const bool happened = runScenario(*make(), fault);
    const long left = SystemFaults::liveObjects() - objects;
    alarm(0);
    if (happened && (fault.isTold || !isNonsense(fault.kind)))
        count(name, fault);
    if (failures() > failuresBefore)
        return happened; // the report of a failure takes memory too
    EXPECT_EQ(openFiles(), files) << fault.text;
    // What the first run leaves is made once. The SDK's timer is nobody's once its host refused it
    // with an exception or did not take it back.
    if (happened && !fault.hit("egisterTimer(")) {
        EXPECT_EQ(left, 0) << "objects left in memory: " << fault.text;
    }
    return happened;
}

} // namespace
} // namespace faults

/** For the leak sanitizer: the SDK drops the timer that a host's run loop threw at. */
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions()
{
    return "leak:createLinuxTimer";
}

namespace faults {

void injectFaults(const char* name, const MakeScenario& make)
{
    run(name, make, {});
    run(name, make, {});
    const Repetitions repetitions(make);
    int badRuns = 0;
    for (const Kind kind : kKinds) {
        bool happened = true;
        for (size_t call = 1; happened && badRuns < kMaxBadRuns; ++call) {
            if (repetitions.holds(kind, call))
                continue;
            const int before = failures();
            happened = run(name, make, {kind, call, {}, false});
            badRuns += failures() > before ? 1 : 0;
        }
    }
    printCount(name);
}

} // namespace faults
